#pragma once

#include <array>

struct _XDisplay;  // NOLINT(bugprone-reserved-identifier): Xlib calls it so.

namespace tavelo::linuxdesktop {

/// A connection to the X server through Xlib that neither an error of the protocol nor the end of the server
/// ends the program by. Main thread.
class XlibConnection final {
 public:
  /// Connects to the display that the environment names, or to none.
  explicit XlibConnection(bool connect = true);
  ~XlibConnection();
  XlibConnection(const XlibConnection&) = delete;
  XlibConnection& operator=(const XlibConnection&) = delete;

  /// Null when no server answered. Stays what it is when the server goes; ask `isAlive` before use.
  _XDisplay* display() const { return display_; }

  /// Whether the server is there, as far as the last use of the connection told.
  bool isAlive() const { return display_ != nullptr && !broken_; }

  /// Which keys are down now, by X key code; absent without a server.
  bool queryKeymap(std::array<char, 32>& keys) const;

 private:
  _XDisplay* display_ = nullptr;
  bool broken_ = false;
};

}  // namespace tavelo::linuxdesktop
