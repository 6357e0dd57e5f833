#pragma once

#include <QString>
#include <chrono>

namespace tavelo::linuxdesktop {

/// Whether the D-Bus daemon at an address answers the first words of a connection within `limit`. To be asked
/// before connecting, which waits without end for a daemon that hangs. True for an address of a kind other
/// than a local socket. Any thread.
bool busGreets(const QString& address, std::chrono::milliseconds limit);

}  // namespace tavelo::linuxdesktop
