#pragma once

#include <cstdint>
#include <optional>

#include "platform/Workspace.h"

struct xcb_connection_t;

namespace tavelo::linuxdesktop {

/// The process that the X server says made the window, in well under a millisecond; absent when the server
/// cannot tell, or when it is on another machine. The thread that uses the connection.
std::optional<platform::ProcessIdentifier> processOfClient(xcb_connection_t* connection,
                                                           std::uint32_t window);

}  // namespace tavelo::linuxdesktop
