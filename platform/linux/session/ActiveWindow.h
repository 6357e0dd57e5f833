#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/Workspace.h"

namespace tavelo::linuxdesktop {

/// A window, by the number that its display server gave it.
using WindowIdentifier = std::uint32_t;
/// The identifier of none.
inline constexpr WindowIdentifier noWindow = 0;

/// The application that a window says it belongs to, for example "mousepad" and "Mousepad".
struct WindowClass {
  std::string instance;
  std::string name;
};

/// What accessibility, keyboard and workspace ask about the windows of other applications. Every answer is
/// fresh and comes within about a millisecond. Without a display server nothing is found. Main thread.
class ActiveWindow {
 public:
  virtual ~ActiveWindow() = default;

  /// The window that the user works in; absent when no window has the focus.
  virtual std::optional<WindowIdentifier> activeWindow() = 0;

  /// The process on this machine that a window belongs to; absent when nobody can tell.
  virtual std::optional<platform::ProcessIdentifier> process(WindowIdentifier window) = 0;

  virtual std::optional<WindowClass> windowClass(WindowIdentifier window) = 0;

  /// UTF-8 if the application keeps to the rules; not checked.
  virtual std::optional<std::string> title(WindowIdentifier window) = 0;

  /// The topmost visible window of a process.
  virtual std::optional<WindowIdentifier> windowOf(platform::ProcessIdentifier process) = 0;

  /// Asks for the window to come to the front and get the focus; takes effect later. False when the request
  /// could not be sent.
  virtual bool activate(WindowIdentifier window) = 0;
};

}  // namespace tavelo::linuxdesktop
