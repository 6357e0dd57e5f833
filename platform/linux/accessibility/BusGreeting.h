#pragma once

#include <QString>
#include <chrono>

namespace tavelo::linuxdesktop {

/// Whether the D-Bus daemon at an address answers the start of the handshake within `limit`. Call it before
/// connecting, which would wait forever for a daemon that hangs. Always true for an address that is not a
/// local socket. Any thread.
bool busGreets(const QString& address, std::chrono::milliseconds limit);

}  // namespace tavelo::linuxdesktop
