#import "platform/macos/KeyReading.h"

#include <algorithm>

namespace tavelo::macos {

using platform::KeyEventType;

namespace {

/// The Globe key, which is Fn: some keyboards report it as a key of its own too.
constexpr std::int64_t globeKey = 179;

/// The system stamps events with the time since it started, asleep not counted. Our clock may count that.
platform::Uptime timeOf(NSEvent* event, const platform::Clock& clock) {
  const platform::Uptime now = clock.uptime();
  // What another program posts may bear no time.
  if (!(event.timestamp > 0)) return now;
  const platform::Seconds age{NSProcessInfo.processInfo.systemUptime - event.timestamp};
  return now - std::max(platform::toUptime(age), platform::Uptime::zero());
}

}  // namespace

KeyReading readKey(KeyEventType type, NSEvent* event, const platform::Clock& clock) {
  KeyReading reading;
  reading.event.type = type;
  if (event == nil) {
    reading.event.timestamp = clock.uptime();
    return reading;
  }
  reading.event.timestamp = timeOf(event, clock);
  reading.event.keyCode = event.keyCode;
  reading.event.flags = event.modifierFlags;
  const CGEventRef source = event.CGEvent;
  const bool isOurs =
      source != nullptr && CGEventGetIntegerValueField(source, kCGEventSourceUserData) == postedKeyMark;
  // Only key-downs have a repeat; AppKit raises an exception for the others.
  reading.isPress = type == KeyEventType::keyDown && !isOurs && ![event isARepeat];
  return reading;
}

bool HoldWatch::take(const KeyReading& reading) {
  const platform::KeyboardEvent& event = reading.event;
  const bool isFunction = event.keyCode == platform::keycodes::function;
  switch (event.type) {
    case KeyEventType::flagsChanged:
      isHeld_ = (event.flags & platform::keyflags::secondaryFn) != 0;
      return false;
    case KeyEventType::keyDown:
      if (!isFunction) return isHeld_ && reading.isPress && event.keyCode != globeKey;
      isHeld_ = true;
      return false;
    case KeyEventType::keyUp:
      if (isFunction) isHeld_ = false;
      return false;
    default:
      return false;
  }
}

}  // namespace tavelo::macos
