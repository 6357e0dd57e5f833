#pragma once

#include <QString>
#include <chrono>

namespace tavelo::linuxdesktop {

/// Whether a D-Bus daemon at `busAddress` completes a handshake within `limit`, its answer to `Hello`
/// included. Ask before connecting: that waits 25 s for a daemon that hangs, and for some addresses starts a
/// program. False if the address names anything but sockets. True, without asking, for a socket of another
/// machine. Any thread.
bool completesHandshake(const QString& busAddress, std::chrono::milliseconds limit);

}  // namespace tavelo::linuxdesktop
