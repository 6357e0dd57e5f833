#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>

#include "platform/Clock.h"
#include "platform/KeyboardEvents.h"
#include "ui/qt/setup/SetupDesktop.h"
#include "ui/qt/setup/SetupLines.h"

namespace tavelo {

/// The hold key's line of the set-up window: lets the user press the key that is to be held, and waits for it
/// to be held once. Watches the keyboard while it lives. Main thread.
class KeySetup final {
 public:
  /// `desktop` must outlive this object.
  explicit KeySetup(const SetupDesktop& desktop);
  KeySetup(const KeySetup&) = delete;
  KeySetup& operator=(const KeySetup&) = delete;

  /// Called when the line has changed.
  std::function<void()> onChange;
  /// Called when a key was pressed that may be the hold key, and after it was saved; with the reason if it
  /// could not be.
  std::function<void(const std::string& problem)> onChosen;

  LineState line() const;
  /// The hold key, or the chosen one, which is the hold key once it is up.
  std::string keyName() const { return chosen_.empty() ? desktop_.holdKeyName() : chosen_; }
  bool isChoosing() const { return isChoosing_; }

  /// From now on the next key that goes down is the choice.
  void choose();
  /// The key stays as it is.
  void abandon();

 private:
  void handle(const platform::KeyboardEvent& event);
  bool goesDown(const platform::KeyboardEvent& event);
  void take(const platform::KeyFacts& key);
  void changed() const;

  const SetupDesktop& desktop_;
  /// Dropped in this order: the tap after its source.
  std::unique_ptr<platform::EventTap> tap_;
  std::unique_ptr<platform::RunLoopSource> source_;
  const platform::Clock& clock_;
  bool isChoosing_ = false;
  platform::Uptime choosingSince_{};
  bool wasHeld_ = false;
  /// What the key is called that was chosen here; empty before.
  std::string chosen_;
  platform::KeyFacts refused_;
  /// The modifiers that were held after the last event.
  std::uint64_t flags_ = 0;
  /// Keys that count as modifiers but have no flag, as far as we saw them go down.
  std::set<std::int64_t> silentModifiers_;
};

}  // namespace tavelo
