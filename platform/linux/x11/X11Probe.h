#pragma once

#include <string>

#include "platform/linux/x11/X11Windows.h"
#include "platform/linux/x11/XlibConnection.h"

namespace tavelo::linuxdesktop {

/// Drives and watches a desktop from outside, for tools that measure the running program: moves the hold key
/// as the user would, and sees when a program shows a window. Main thread.
class X11Probe final {
 public:
  /// Watches windows from now on. `holdKey` is the user's, as in `X11KeyboardEvents`.
  explicit X11Probe(const std::string& holdKey);

  /// Whether there is an X server, and its keyboard has the hold key.
  bool isUsable() const { return holdKey_ != 0; }

  /// Presses or releases the key that stands for Fn. Returns when the server has carried it out. Windows that
  /// were shown before no longer count in `awaitWindow`.
  void moveHoldKey(bool down);

  /// Waits until the process shows a window. False when it has not by `deadline`.
  bool awaitWindow(platform::ProcessIdentifier process, XcbConnection::Instant deadline);

 private:
  XlibConnection keyboard_;
  KeyNumber holdKey_ = 0;
  X11Windows windows_;
  XcbConnection events_;
};

}  // namespace tavelo::linuxdesktop
