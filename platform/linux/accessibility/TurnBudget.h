#pragma once

#include <cstdint>

#include "platform/Clock.h"
#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/Time.h"

namespace tavelo::linuxdesktop {

/// How long one turn of the main queue may wait for other applications, all its calls together.
///
/// A turn begins anew with the first block that the main queue runs after a wait, nested runs of the main
/// loop included. Main thread.
class TurnBudget final {
 public:
  /// What a single call, or calls sent together, may take.
  static constexpr platform::Uptime callLimit = std::chrono::milliseconds(250);
  static constexpr platform::Uptime turnLimit = std::chrono::milliseconds(300);

  TurnBudget(platform::MainQueue& mainQueue, const platform::Clock& clock);

  /// What the next call may take; less than a millisecond when the turn has waited enough.
  platform::Uptime allowance() const;

  /// Counts the turns: what was learnt under another number may have changed since.
  std::uint64_t turn() const { return turn_; }

  /// Charges the turn with its own lifetime.
  class Wait final {
   public:
    explicit Wait(TurnBudget& budget);
    ~Wait();
    Wait(const Wait&) = delete;
    Wait& operator=(const Wait&) = delete;

    /// How long it has been.
    platform::Uptime elapsed() const;

   private:
    TurnBudget& budget_;
    const platform::Uptime start_;
  };

 private:
  void renewLater();

  platform::MainQueue& mainQueue_;
  const platform::Clock& clock_;
  platform::Uptime spent_{0};
  std::uint64_t turn_ = 0;
  bool renewalIsPosted_ = false;
  platform::Lifetime lifetime_;
};

}  // namespace tavelo::linuxdesktop
