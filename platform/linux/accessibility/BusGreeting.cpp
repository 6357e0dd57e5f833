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

/// The value of `key` in one address, such as "unix:path=/run/user/1000/bus,guid=0123"; empty if absent.
QByteArray valueOf(const QByteArray& entry, const QByteArray& key) {
  for (const auto& each : entry.mid(entry.indexOf(':') + 1).split(','))
    if (each.startsWith(key + '=')) return QByteArray::fromPercentEncoding(each.mid(key.size() + 1));
  return {};
}

/// The name of a local bus's socket, as `connect` wants it; empty for another kind of bus.
QByteArray socketName(const QByteArray& entry) {
  if (!entry.startsWith("unix:")) return {};
  if (const auto name = valueOf(entry, "abstract"); !name.isEmpty()) return '\0' + name;
  return valueOf(entry, "path");
}

bool speaksTo(int socket, const QByteArray& name, std::chrono::milliseconds limit) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (static_cast<std::size_t>(name.size()) > sizeof address.sun_path) return false;
  std::copy(name.begin(), name.end(), address.sun_path);
  const auto length =
      static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + static_cast<std::size_t>(name.size()));
  // Does not wait: if the socket's queue is full, this fails.
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
  // Only the first address matters; the others are fallbacks for an address of another machine.
  const auto name = socketName(address.toUtf8().split(';').constFirst());
  if (name.isEmpty()) return true;
  const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  if (socket < 0) return false;
  const bool greets = speaksTo(socket, name, limit);
  ::close(socket);
  return greets;
}

}  // namespace tavelo::linuxdesktop
