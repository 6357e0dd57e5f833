#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <vector>

#include "platform/linux/x11/XcbConnection.h"
#include "platform/linux/x11/pasteboard/SelectionContents.h"

namespace tavelo::linuxdesktop {

/// Sends contents that are too large for one property, part by part: the next part when the requestor has
/// taken the one before. One thread.
class SelectionTransfers final {
 public:
  explicit SelectionTransfers(XcbConnection& connection);

  /// Starts a transfer. False when too many are running.
  bool begin(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type, SharedBytes bytes);

  /// Continues the transfer that the event belongs to, if any.
  void handle(const xcb_generic_event_t& event);

  /// Drops transfers whose requestor has stopped taking parts. Returns when to call again; absent when no
  /// transfer is left.
  std::optional<XcbConnection::Instant> expire();

 private:
  struct Transfer {
    xcb_window_t requestor;
    xcb_atom_t property;
    xcb_atom_t type;
    SharedBytes bytes;
    std::size_t sent;
    XcbConnection::Instant expiresAt;
  };

  void sendNext(std::size_t index);

  XcbConnection& connection_;
  const xcb_atom_t incr_;
  std::vector<Transfer> transfers_;
};

/// The most bytes that are sent in one property.
inline constexpr std::size_t largestPart = std::size_t{256} << 10U;

}  // namespace tavelo::linuxdesktop
