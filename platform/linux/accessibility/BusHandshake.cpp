#include "platform/linux/accessibility/BusHandshake.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QList>
#include <QSysInfo>
#include <algorithm>
#include <cstddef>
#include <cstdint>

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

/// Whether connecting to this address opens a socket and nothing else: for some addresses the D-Bus library
/// starts a program.
bool isSocket(const QByteArray& entry) { return entry.startsWith("unix:") || entry.startsWith("tcp:"); }

/// The name of a local bus's socket, as `connect` wants it; empty for another kind of bus.
QByteArray socketName(const QByteArray& entry) {
  if (!entry.startsWith("unix:")) return {};
  if (const auto name = valueOf(entry, "abstract"); !name.isEmpty()) return '\0' + name;
  return valueOf(entry, "path");
}

/// D-Bus's call of `Hello`, which every client sends first.
class Hello final {
 public:
  static QByteArray message() {
    Hello fields;
    fields.add('\1', 'o', "/org/freedesktop/DBus");
    fields.add('\6', 's', "org.freedesktop.DBus");
    fields.add('\2', 's', "org.freedesktop.DBus");
    fields.add('\3', 's', "Hello");
    Hello all;
    all.bytes_ = QByteArray(1, QSysInfo::ByteOrder == QSysInfo::LittleEndian ? 'l' : 'B');
    // A method call without flags, by the first version of the protocol.
    all.bytes_ += QByteArray("\1\0\1", 3);
    constexpr std::uint32_t bodyLength = 0;
    constexpr std::uint32_t serial = 1;
    all.add(bodyLength);
    all.add(serial);
    all.add(static_cast<std::uint32_t>(fields.bytes_.size()));
    all.bytes_ += fields.bytes_;
    all.align();
    return all.bytes_;
  }

 private:
  void add(std::uint32_t number) { bytes_.append(reinterpret_cast<const char*>(&number), sizeof number); }
  void add(char field, char type, const QByteArray& value) {
    align();
    bytes_ += field;
    bytes_ += '\1';
    bytes_ += type;
    bytes_ += '\0';
    add(static_cast<std::uint32_t>(value.size()));
    bytes_ += value + '\0';
  }
  /// A header field begins at a multiple of eight, and so does the body.
  void align() { bytes_.append((8 - bytes_.size() % 8) % 8, '\0'); }

  QByteArray bytes_;
};

/// One attempt to connect. Never waits beyond its deadline.
class Attempt final {
 public:
  explicit Attempt(std::chrono::milliseconds limit)
      : deadline_(limit), socket_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {}
  ~Attempt() {
    if (socket_ >= 0) ::close(socket_);
  }
  Attempt(const Attempt&) = delete;
  Attempt& operator=(const Attempt&) = delete;

  bool connect(const QByteArray& name) const {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (socket_ < 0 || static_cast<std::size_t>(name.size()) > sizeof address.sun_path) return false;
    std::copy(name.begin(), name.end(), address.sun_path);
    const auto length =
        static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + static_cast<std::size_t>(name.size()));
    // Does not wait: if the socket's queue is full, this fails.
    return ::connect(socket_, reinterpret_cast<const sockaddr*>(&address), length) == 0;
  }

  /// Whether the daemon answers `text` with something that begins with `start`.
  bool answers(const QByteArray& text, const QByteArray& start) const {
    if (::send(socket_, text.data(), static_cast<std::size_t>(text.size()), MSG_NOSIGNAL) != text.size())
      return false;
    pollfd answer{.fd = socket_, .events = POLLIN, .revents = 0};
    if (::poll(&answer, 1, static_cast<int>(deadline_.remainingTime())) <= 0) return false;
    char got[256];
    const auto count = ::recv(socket_, got, sizeof got, 0);
    return count > 0 && QByteArray(got, count).startsWith(start);
  }

 private:
  const QDeadlineTimer deadline_;
  const int socket_;
};

}  // namespace

bool completesHandshake(const QString& busAddress, std::chrono::milliseconds limit) {
  const auto entries = busAddress.toUtf8().split(';');
  // The library tries one address after another, so a bad one anywhere is too many.
  if (!std::all_of(entries.begin(), entries.end(), isSocket)) return false;
  // Only the first is asked; the others are fallbacks for an address of another machine.
  const auto name = socketName(entries.constFirst());
  if (name.isEmpty()) return true;
  const Attempt attempt(limit);
  const QByteArray user = QByteArray::number(static_cast<uint>(::getuid())).toHex();
  // The daemon answers each message with one that begins with the byte order.
  const QByteArray hello = Hello::message();
  return attempt.connect(name) &&
         attempt.answers('\0' + QByteArray("AUTH EXTERNAL ") + user + "\r\n", "OK ") &&
         attempt.answers("BEGIN\r\n" + hello, hello.first(1));
}

}  // namespace tavelo::linuxdesktop
