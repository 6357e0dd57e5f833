#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/x11/pasteboard/XcbConnection.h"

namespace tavelo::linuxdesktop {

/// Contents that are too large for one property, on their way to those who asked: part by part, each when the
/// one before was taken. One thread.
class SelectionTransfers final {
 public:
  explicit SelectionTransfers(XcbConnection& connection);

  /// Begins one. False when too many are under way.
  bool begin(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type,
             std::shared_ptr<const std::string> bytes);

  /// Goes on with what the event tells of.
  void handle(const xcb_generic_event_t& event);

  /// Gives up those whose requestor takes nothing any more. Absent when none is left, else the time to look
  /// again.
  std::optional<XcbConnection::Instant> expire();

 private:
  struct Transfer {
    xcb_window_t requestor;
    xcb_atom_t property;
    xcb_atom_t type;
    std::shared_ptr<const std::string> bytes;
    std::size_t sent;
    XcbConnection::Instant givenUpAt;
  };

  void sendNext(std::size_t index);

  XcbConnection& connection_;
  const xcb_atom_t incr_;
  std::vector<Transfer> transfers_;
};

/// The most that is sent in one property.
inline constexpr std::size_t largestPart = std::size_t{256} << 10U;

}  // namespace tavelo::linuxdesktop
