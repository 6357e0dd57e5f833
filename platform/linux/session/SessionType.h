#pragma once

#include "platform/Environment.h"

namespace tavelo::linuxdesktop {

/// Whether the session's native windows speak Wayland, so that X sees neither them nor their keys. Decided by
/// the environment, which also shows a compositor that was started from a text console.
inline bool isWaylandSession() {
  const auto type = platform::environmentVariable("XDG_SESSION_TYPE");
  return type == "wayland" || (type != "x11" && !platform::environmentVariable("WAYLAND_DISPLAY").empty());
}

}  // namespace tavelo::linuxdesktop
