#include "platform/linux/accessibility/BusGreeting.h"

#include <QByteArray>
#include <QList>
#include <algorithm>
#include <cstddef>
#include <cstring>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace tavelo::linuxdesktop {
namespace {

/// Of one place, such as "unix:path=/run/user/1000/bus,guid=0123"; empty when it has no such key.
QByteArray valueOf(const QByteArray& place, const QByteArray& key) {
  for (const auto& each : place.mid(place.indexOf(':') + 1).split(','))
    if (each.startsWith(key + '=')) return QByteArray::fromPercentEncoding(each.mid(key.size() + 1));
  return {};
}

/// Where a local bus listens, as the system wants it; empty for another kind of bus.
QByteArray socketName(const QByteArray& place) {
  if (!place.startsWith("unix:")) return {};
  if (const auto name = valueOf(place, "abstract"); !name.isEmpty()) return '\0' + name;
  return valueOf(place, "path");
}

bool speaksTo(int socket, const QByteArray& name, std::chrono::milliseconds limit) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (static_cast<std::size_t>(name.size()) > sizeof address.sun_path) return false;
  std::copy(name.begin(), name.end(), address.sun_path);
  const auto length =
      static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + static_cast<std::size_t>(name.size()));
  // Does not wait: a local socket has room for us, or has not.
  if (::connect(socket, reinterpret_cast<const sockaddr*>(&address), length) != 0) return false;
  const QByteArray user = QByteArray::number(static_cast<uint>(::getuid())).toHex();
  const QByteArray greeting = '\0' + QByteArray("AUTH EXTERNAL ") + user + "\r\n";
  if (::send(socket, greeting.data(), static_cast<std::size_t>(greeting.size()), MSG_NOSIGNAL) !=
      greeting.size())
    return false;
  pollfd answer{.fd = socket, .events = POLLIN, .revents = 0};
  return ::poll(&answer, 1, static_cast<int>(limit.count())) > 0;
}

}  // namespace

bool busGreets(const QString& address, std::chrono::milliseconds limit) {
  // The first place counts; the others are there for when it is none of this machine's.
  const auto name = socketName(address.toUtf8().split(';').constFirst());
  if (name.isEmpty()) return true;
  const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  if (socket < 0) return false;
  const bool greets = speaksTo(socket, name, limit);
  ::close(socket);
  return greets;
}

}  // namespace tavelo::linuxdesktop
