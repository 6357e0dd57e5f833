#pragma once

#include <optional>
#include <vector>

#include "platform/linux/x11/XcbConnection.h"

namespace tavelo::linuxdesktop {

/// The application that got the latest paste command, as the X server knows it. One thread.
class PasteTarget final {
 public:
  /// `connection` must outlive it.
  explicit PasteTarget(XcbConnection& connection)
      : connection_(connection), clientList_(connection.atom("_NET_CLIENT_LIST")) {}

  /// The command goes to the application of `window` at this time of the server.
  void set(xcb_window_t window, xcb_timestamp_t commandedAt);
  void clear();

  /// Whether the target asks because of the command. A change of ownership also makes applications ask: our
  /// swap before the command, and what happened at `coveredAt`. Absent when it cannot be told who asks.
  std::optional<bool> obeysCommand(const xcb_selection_request_event_t& request,
                                   std::optional<xcb_timestamp_t> coveredAt) const;

  /// Whether the event says that the desktop's list of windows has changed.
  bool hasNewWindows(const xcb_generic_event_t& event) const;
  /// Reads that list. Dialogs of the target that are new in it are kept if `wanted`.
  void updateDialogs(bool wanted);
  /// Whether one of those dialogs is open.
  bool hasDialog() const { return !dialogs_.empty(); }

 private:
  /// Whether a window belongs to the same process or, if the server does not tell that, to the same client.
  /// Absent when that cannot be told.
  std::optional<bool> owns(xcb_window_t window) const;
  void watchWindows(bool watches);
  bool isDialog(xcb_window_t window) const;

  XcbConnection& connection_;
  const xcb_atom_t clientList_;
  xcb_window_t window_ = XCB_WINDOW_NONE;
  xcb_timestamp_t commandedAt_ = XCB_CURRENT_TIME;
  std::optional<platform::ProcessIdentifier> process_;
  /// All windows of the desktop when we last looked, and the dialogs among them.
  std::vector<xcb_window_t> known_;
  std::vector<xcb_window_t> dialogs_;
};

}  // namespace tavelo::linuxdesktop
