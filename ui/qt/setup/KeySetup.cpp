#include "ui/qt/setup/KeySetup.h"

#include <utility>

#include "platform/Platform.h"

namespace tavelo {
namespace {

using platform::KeyboardEvent;
using platform::KeyEventType;
using platform::KeyUse;

const platform::KeyFacts noKey{.setting = {}, .name = {}, .use = KeyUse::free};

}  // namespace

KeySetup::KeySetup(const SetupDesktop& desktop)
    : desktop_(desktop), clock_(platform::current().clock), refused_(noKey) {
  auto& keyboard = platform::current().keyboardEvents;
  tap_ = keyboard.createEventTap(platform::EventTapLocation::session, platform::EventTapPlacement::headInsert,
                                 platform::EventTapOptions::listenOnly,
                                 maskOf(KeyEventType::keyDown) | maskOf(KeyEventType::flagsChanged),
                                 [this](const KeyboardEvent& event) { handle(event); });
  if (tap_) source_ = keyboard.addRunLoopSource(*tap_);
}

LineState KeySetup::line() const {
  return keyLine({.canWatch = desktop_.canWatchKeys && source_,
                  .isChoosing = isChoosing_,
                  .wasHeld = wasHeld_,
                  .holdKey = keyName(),
                  .refused = refused_});
}

void KeySetup::choose() {
  isChoosing_ = true;
  choosingSince_ = clock_.uptime();
  refused_ = noKey;
  changed();
}

void KeySetup::abandon() {
  isChoosing_ = false;
  changed();
}

void KeySetup::handle(const KeyboardEvent& event) {
  if (!goesDown(event)) return;
  // The keys that pressed the button are not the choice, however late we hear of them.
  if (isChoosing_ && event.timestamp <= choosingSince_) return;
  if (isChoosing_) return take(desktop_.keyFacts(event.keyCode));
  const bool isHoldKey = event.keyCode == platform::keycodes::function;
  if (isHoldKey && !std::exchange(wasHeld_, true)) changed();
}

/// Tells a press from a release. A flags-changed event does not say which it is.
bool KeySetup::goesDown(const KeyboardEvent& event) {
  const auto before = std::exchange(flags_, event.flags);
  if (event.type == KeyEventType::keyDown) return true;
  if (event.type != KeyEventType::flagsChanged) return false;
  if (flags_ != before) return (flags_ & ~before) != 0;
  // Both keys of a pair held, or a key without a flag, such as Caps Lock.
  if (silentModifiers_.erase(event.keyCode) > 0) return false;
  silentModifiers_.insert(event.keyCode);
  return true;
}

void KeySetup::take(const platform::KeyFacts& key) {
  if (key.use != KeyUse::free || key.setting.empty()) {
    refused_ = key;
    return changed();
  }
  isChoosing_ = wasHeld_ = false;
  const auto problem = desktop_.chooseHoldKey(key.setting);
  if (problem.empty()) chosen_ = key.name;
  changed();
  if (onChosen) onChosen(problem);
}

void KeySetup::changed() const {
  if (onChange) onChange();
}

}  // namespace tavelo
