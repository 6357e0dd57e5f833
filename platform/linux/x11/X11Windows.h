#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/linux/session/ActiveWindow.h"
#include "platform/linux/x11/XcbConnection.h"

namespace tavelo::linuxdesktop {

/// Windows of other applications, on a connection of its own. Every question goes to the X server and takes
/// well under a millisecond. Main thread.
///
/// Without a display, or once the server has gone, nothing is found.
class X11Windows final : public ActiveWindow {
 public:
  bool isConnected() const { return connection_.isConnected(); }

  /// The active window if the window manager names one, else the application window with the keyboard focus.
  /// Absent when no window has the focus.
  std::optional<WindowIdentifier> activeWindow() override;

  /// The local process of a window, according to the window itself, else to the server.
  std::optional<platform::ProcessIdentifier> process(WindowIdentifier window) override;

  std::optional<WindowClass> windowClass(WindowIdentifier window) override;

  /// UTF-8 if the application keeps to the rules; not checked.
  std::optional<std::string> title(WindowIdentifier window) override;

  /// The topmost window of a process among those that the window manager lists. Without a window manager:
  /// among those that the server shows.
  std::optional<WindowIdentifier> windowOf(platform::ProcessIdentifier process) override;

  /// The windows of applications, the topmost first; no panels, and not the desktop's own.
  std::vector<WindowIdentifier> applicationWindows();

  /// Asks for the window to come to the front and get the focus; takes effect later. False when the request
  /// could not be sent.
  bool activate(WindowIdentifier window) override;

  /// The window manager's name. Absent when none runs, or when it does not announce itself.
  std::optional<std::string> windowManager() const;

  /// Whether a compositing manager runs, so that windows may be translucent.
  bool compositorRuns() const;

  /// Whether a panel accepts status items that are windows.
  bool statusAreaRuns() const;

  /// Whether a program keeps the clipboard contents of programs that end.
  bool clipboardManagerRuns() const;

  /// The address of the accessibility bus that the root window names.
  std::optional<std::string> accessibilityBus() const;

  /// Whether the window manager supports a hint such as "_NET_ACTIVE_WINDOW".
  bool supports(const std::string& hint) const;

 private:
  std::vector<WindowIdentifier> shownWindows();
  bool isOwned(const std::string& selection) const;

  XcbConnection connection_;
};

}  // namespace tavelo::linuxdesktop
