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

/// Whether a process has been stopped, by a signal or by a debugger, and so answers nobody until it is sent
/// on. False for one that is not there. Any thread.
bool isStopped(platform::ProcessIdentifier process);

}  // namespace tavelo::linuxdesktop
