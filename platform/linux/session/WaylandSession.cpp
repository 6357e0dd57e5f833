#include "platform/linux/session/WaylandSession.h"

#include <cstdlib>
#include <string_view>

namespace tavelo::linuxdesktop {
namespace {

std::string_view environment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

}  // namespace

bool isWaylandSession() {
  const auto type = environment("XDG_SESSION_TYPE");
  return type == "wayland" || (type != "x11" && !environment("WAYLAND_DISPLAY").empty());
}

}  // namespace tavelo::linuxdesktop
