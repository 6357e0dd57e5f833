#pragma once

#include <cstdint>

#import <AppKit/AppKit.h>

#include "platform/Clock.h"
#include "platform/KeyboardEvents.h"

namespace tavelo::macos {

/// Marks the keys that we post, in `kCGEventSourceUserData`.
inline constexpr std::int64_t postedKeyMark = 0x7461766B6579;

/// An event of the system as the program has it.
struct KeyReading {
  platform::KeyboardEvent event;
  /// Whether a key was pressed by the user, not repeated and not posted by us.
  bool isPress = false;
};

/// Reads a key that a tap or a monitor gave. `event` may be nil; `type` then says all.
KeyReading readKey(platform::KeyEventType type, NSEvent* event, const platform::Clock& clock);

/// Follows Fn through the events of one watcher, and finds the keys that interrupt a hold.
///
/// The Fn bit of a key press says nothing: arrows and function keys bear it without Fn.
class HoldWatch final {
 public:
  /// Takes the next event. Returns whether it interrupts a hold.
  bool take(const KeyReading& reading);

 private:
  bool isHeld_ = false;
};

}  // namespace tavelo::macos
