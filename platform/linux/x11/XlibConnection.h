#pragma once

#include <bitset>
#include <optional>

#include "platform/linux/x11/keyboard/KeyRole.h"

struct _XDisplay;  // NOLINT(bugprone-reserved-identifier): Xlib's own name.

namespace tavelo::linuxdesktop {

/// A connection to the X server through Xlib, for the keyboard. Unlike with plain Xlib, neither a failed
/// request nor the end of the server ends the program. Main thread.
class XlibConnection final {
 public:
  /// Connects to the display that the environment names, or to none.
  explicit XlibConnection(bool connect = true);
  ~XlibConnection();
  XlibConnection(const XlibConnection&) = delete;
  XlibConnection& operator=(const XlibConnection&) = delete;

  /// Null when no server answered. Does not change when the server goes; call `isAlive` before use.
  _XDisplay* display() const { return display_; }

  /// Whether the server was there when the connection was last used.
  bool isAlive() const { return display_ != nullptr && !broken_; }

  /// Becomes readable when the server has sent something. The connection must be alive.
  int fileDescriptor() const;

  /// The keys that are down now; absent without a server.
  std::optional<std::bitset<keyNumbers>> keysDown() const;

  /// Presses or releases a key through the test extension; sent with the next round trip. Returns the number
  /// of the request; the raw event of this move carries it too.
  unsigned long moveKey(KeyNumber key, bool down);

  /// Waits until the server has carried out all requests; one round trip. Events that it sent meanwhile wait
  /// in Xlib's queue, where the file descriptor does not show them.
  void synchronise();

 private:
  _XDisplay* display_ = nullptr;
  bool broken_ = false;
};

}  // namespace tavelo::linuxdesktop
