#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/linux/session/ActiveWindow.h"

struct xcb_connection_t;

namespace tavelo::linuxdesktop {

/// Other applications' windows, as the X server and its window manager tell of them; on a connection of its
/// own. Everything is asked afresh, in well under a millisecond a question. Main thread.
///
/// Without a display, or once the server is gone, nothing is found.
class X11Windows final : public ActiveWindow {
 public:
  /// Connects to the display that the environment names.
  X11Windows();
  ~X11Windows() override;
  X11Windows(const X11Windows&) = delete;
  X11Windows& operator=(const X11Windows&) = delete;

  bool isConnected() const;

  /// The window the user works in: the active one if the window manager names it, else the window of an
  /// application that gets the keys. Absent when the focus is nowhere.
  std::optional<WindowIdentifier> activeWindow() override;

  /// The local process a window belongs to: by its own word, else by the server's.
  std::optional<platform::ProcessIdentifier> process(WindowIdentifier window) override;

  std::optional<WindowClass> windowClass(WindowIdentifier window) override;

  /// UTF-8, as far as the application keeps to it.
  std::optional<std::string> title(WindowIdentifier window) override;

  /// The topmost window of a process that the window manager, or else the server, shows.
  std::optional<WindowIdentifier> windowOf(platform::ProcessIdentifier process) override;

  /// Asks for the window to be brought to the front and get the focus; takes effect later. False when there
  /// is nobody to ask.
  bool activate(WindowIdentifier window) override;

  /// The window manager's name; absent when none runs, or none that tells of itself.
  std::optional<std::string> windowManager();

  /// Whether a compositing manager runs, so that windows may be translucent.
  bool compositorRuns();

  /// Whether a panel takes status items as windows of their own.
  bool statusAreaRuns();

  /// Whether somebody keeps the clipboard of programs that end.
  bool clipboardManagerRuns();

  /// Whether the window manager keeps a hint such as "_NET_ACTIVE_WINDOW".
  bool supports(const char* hint);

 private:
  bool isOwned(const std::string& selection);
  void discardEvents();

  xcb_connection_t* connection_;
  int screen_ = 0;
  WindowIdentifier root_ = 0;
};

}  // namespace tavelo::linuxdesktop
