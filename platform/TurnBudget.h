#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include "platform/Clock.h"
#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/Time.h"

namespace tavelo::platform {

/// Limits how long one turn of the main queue may be busy with other applications: waiting for them and
/// reading what they answered, in all its calls together.
///
/// A new turn begins with the first block that the main queue runs after a wait, even in a nested run of the
/// main loop. Main thread.
class TurnBudget final {
 public:
  /// The limit of a single call, or of calls that are sent together.
  static constexpr Uptime callLimit = std::chrono::milliseconds(250);
  static constexpr Uptime turnLimit = std::chrono::milliseconds(300);

  TurnBudget(MainQueue& mainQueue, const Clock& clock);

  /// How long the next call may take; less than a millisecond if the turn has used up its time.
  Uptime allowance() const;

  /// Changes with each turn. What was read in another turn may be out of date.
  std::uint64_t turn() const { return turn_; }

  /// Whether the turn has used up its time, so that calls fail at once.
  bool isUsedUp() const { return isTooLittle(allowance()); }

  /// Whether no call may be made with this allowance.
  static constexpr bool isTooLittle(Uptime allowance) { return allowance < std::chrono::milliseconds(1); }

  /// Charges its own lifetime to the turn. One inside another is not charged twice.
  class Wait final {
   public:
    explicit Wait(TurnBudget& budget);
    ~Wait();
    Wait(const Wait&) = delete;
    Wait& operator=(const Wait&) = delete;

    /// The time since its construction.
    Uptime elapsed() const;

   private:
    TurnBudget& budget_;
    const Uptime start_;
    const bool isOutermost_;
  };

 private:
  void renewLater();

  MainQueue& mainQueue_;
  const Clock& clock_;
  Uptime spent() const;

  Uptime spent_{0};
  /// When the outermost wait began.
  std::optional<Uptime> waitingSince_;
  std::uint64_t turn_ = 0;
  bool renewalIsPosted_ = false;
  Lifetime lifetime_;
};

}  // namespace tavelo::platform
