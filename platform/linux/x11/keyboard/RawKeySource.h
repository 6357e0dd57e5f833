#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "platform/linux/x11/keyboard/KeyRole.h"
#include "platform/linux/x11/keyboard/ServerClock.h"
#include "platform/linux/x11/keyboard/XlibConnection.h"

union _XEvent;  // NOLINT(bugprone-reserved-identifier): Xlib calls it so.
class QSocketNotifier;

namespace tavelo::linuxdesktop {

/// Every move of every key of the desktop, whoever has the focus and whoever grabs the keyboard; and word of
/// changes to the keyboard itself. Main thread, in any of its event loops.
class RawKeySource final {
 public:
  struct Move {
    KeyNumber key = 0;
    bool down = false;
    /// When it moved, not when we heard of it.
    platform::Uptime at{};
    /// The last of our requests that the server had carried out by then.
    unsigned long request = 0;
  };
  /// Called from `read`, so also from inside requests of others on the connection. Must not wait.
  struct Listener {
    std::function<void(const Move&)> keyMoved;
    /// Keys have other meanings, or another keyboard is in use.
    std::function<void()> mapChanged;
    /// A keyboard came or went; keys that were down may not have said that they are up.
    std::function<void()> devicesChanged;
    /// Called from the event loop after all that came was read.
    std::function<void()> idle;
  };

  /// Uses `connection`, which it outlives not, and is the only one to read its events.
  RawKeySource(XlibConnection& connection, Listener listener);
  ~RawKeySource();

  /// Whether the server lets us see the keys.
  bool canWatch() const { return canWatch_ && connection_.isAlive(); }

  /// Hands on what has come, and what a round trip of ours has left in the connection's own queue.
  void read();

  /// Reads what was sent to us before now; one round trip.
  void synchronise();

 private:
  bool selectEvents();
  void calibrateClock();
  void handle(_XEvent& event);

  XlibConnection& connection_;
  Listener listener_;
  ServerClock clock_;
  std::unique_ptr<QSocketNotifier> notifier_;
  int inputExtension_ = 0;
  int keyboardExtension_ = 0;
  bool canWatch_ = false;
};

}  // namespace tavelo::linuxdesktop
