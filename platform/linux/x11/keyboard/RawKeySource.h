#pragma once

#include <cstdint>
#include <optional>

#include "platform/linux/x11/XlibConnection.h"
#include "platform/linux/x11/keyboard/ServerClock.h"

union _XEvent;  // NOLINT(bugprone-reserved-identifier): Xlib's own name.

namespace tavelo::linuxdesktop {

/// Reads every move of every key of the desktop, whichever window has the focus or grabs the keyboard, and
/// changes of the keyboard itself. Main thread.
class RawKeySource final {
 public:
  enum class Kind : std::uint8_t {
    keyMoved,
    /// Keys have other meanings, or another keyboard is in use.
    mapChanged,
    /// A keyboard came or went. Releases of its keys may have been lost.
    devicesChanged,
  };
  struct Event {
    Kind kind = Kind::keyMoved;
    /// The rest is set for `keyMoved` only.
    KeyNumber key = 0;
    bool down = false;
    /// When the key moved, not when we read it.
    platform::Uptime at{};
    /// The last of our requests that the server had carried out by then.
    unsigned long request = 0;
  };

  /// `connection` must outlive it; nobody else may read its events.
  explicit RawKeySource(XlibConnection& connection);

  /// Whether the server lets us see the keys.
  bool canWatch() const { return canWatch_ && connection_.isAlive(); }

  /// The next event that has arrived, without waiting. Absent when none is left or the server has gone.
  std::optional<Event> next();

 private:
  bool selectEvents();
  void calibrateClock();
  std::optional<Event> translate(_XEvent& event);

  XlibConnection& connection_;
  ServerClock clock_;
  int inputExtension_ = 0;
  int keyboardExtension_ = 0;
  bool canWatch_ = false;
};

}  // namespace tavelo::linuxdesktop
