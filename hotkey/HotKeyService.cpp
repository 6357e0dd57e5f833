#include "hotkey/HotKeyService.h"

#include "platform/Platform.h"

namespace tavelo {
namespace {

using platform::KeyEventType;
using platform::Seconds;

/// A Fn transition within this time of the last accepted one is dropped, not deferred.
constexpr Seconds functionDebounce{0.08};
/// A toggle within this time of the last accepted one is dropped, so auto-repeat toggles slowly.
constexpr Seconds toggleThrottle{0.45};

bool isWithin(Seconds threshold, const std::optional<platform::Uptime>& last, platform::Uptime at) {
  return last && at - *last <= threshold;
}

bool holds(const platform::KeyboardEvent& event, std::uint64_t bits) { return (event.flags & bits) == bits; }

/// Whether this key, going down, is the toggle shortcut.
bool isToggle(const platform::KeyboardEvent& press) {
  return press.keyCode == platform::keycodes::v &&
         holds(press, platform::keyflags::control | platform::keyflags::option);
}

}  // namespace

HotKeyService::HotKeyService() : HotKeyService(platform::current().keyboardEvents) {}

HotKeyService::HotKeyService(platform::KeyboardEvents& keyboardEvents) : keyboardEvents_(keyboardEvents) {}

void HotKeyService::start() {
  startEventTapIfNeeded();
  startNSEventFallbackIfNeeded();
}

void HotKeyService::startEventTapIfNeeded() {
  if (eventTap_) return;
  constexpr auto mask =
      maskOf(KeyEventType::flagsChanged) | maskOf(KeyEventType::keyDown) | maskOf(KeyEventType::keyUp);
  eventTap_ = keyboardEvents_.createEventTap(platform::EventTapLocation::session,
                                             platform::EventTapPlacement::headInsert,
                                             platform::EventTapOptions::listenOnly, mask,
                                             [this](const platform::KeyboardEvent& event) { handle(event); });
  if (!eventTap_) return;
  runLoopSource_ = keyboardEvents_.addRunLoopSource(*eventTap_);
  eventTap_->enable(true);
}

void HotKeyService::startNSEventFallbackIfNeeded() {
  const auto addIfNeeded = [this](std::unique_ptr<platform::EventMonitor>& monitor, KeyEventType type) {
    if (monitor) return;
    monitor = keyboardEvents_.addGlobalMonitor(
        maskOf(type), [this](const platform::KeyboardEvent& event) { handle(event); });
  };
  addIfNeeded(flagsMonitor_, KeyEventType::flagsChanged);
  addIfNeeded(keyDownMonitor_, KeyEventType::keyDown);
  addIfNeeded(keyUpMonitor_, KeyEventType::keyUp);
}

void HotKeyService::handle(const platform::KeyboardEvent& event) {
  const bool isFunctionKey = event.keyCode == platform::keycodes::function;
  switch (event.type) {
    case KeyEventType::flagsChanged:
      // Any modifier, not only Fn: this is how we recover from a release that the debounce dropped.
      handleFunctionTransition(holds(event, platform::keyflags::secondaryFn), event.timestamp);
      break;
    case KeyEventType::keyDown:
      if (isToggle(event)) {
        triggerToggle(event.timestamp);
      } else if (isFunctionKey) {
        handleFunctionTransition(true, event.timestamp);
      }
      break;
    case KeyEventType::keyUp:
      if (isFunctionKey) handleFunctionTransition(false, event.timestamp);
      break;
    case KeyEventType::holdInterrupted:
      interruptHold(event);
      break;
    default:
      // A notice that the tap was disabled. From then on only the monitors deliver.
      break;
  }
}

void HotKeyService::handleFunctionTransition(bool isDown, platform::Uptime at) {
  if (isDown == isFunctionDown_) return;
  // The release of a shortcut such as Fn-C may come within the debounce. If it were lost, the next press
  // would be lost too.
  const bool endsCancelledHold = isHoldCancelled_;
  if (!endsCancelledHold && isWithin(functionDebounce, lastFunctionTransitionAt_, at)) return;
  lastFunctionTransitionAt_ = at;
  isFunctionDown_ = isDown;
  isHoldCancelled_ = false;
  if (endsCancelledHold) return;
  if (onAction) onAction(isDown ? HotKeyAction::startHold : HotKeyAction::stopHold);
}

void HotKeyService::interruptHold(const platform::KeyboardEvent& press) {
  // The toggle ends a dictation in its own way.
  if (!isFunctionDown_ || isHoldCancelled_ || isToggle(press)) return;
  isHoldCancelled_ = true;
  if (onAction) onAction(HotKeyAction::cancelHold);
}

void HotKeyService::triggerToggle(platform::Uptime at) {
  if (isWithin(toggleThrottle, lastTriggerAt_, at)) return;
  lastTriggerAt_ = at;
  if (onAction) onAction(HotKeyAction::toggle);
  if (onTrigger) onTrigger();
}

}  // namespace tavelo
