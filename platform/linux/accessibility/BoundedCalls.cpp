#include "platform/linux/accessibility/BoundedCalls.h"

#include <QByteArray>
#include <QDBusError>
#include <QList>
#include <algorithm>
#include <chrono>
#include <cstddef>
#include <limits>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "platform/linux/accessibility/AtspiMessages.h"

namespace tavelo::linuxdesktop {
namespace {

/// A time-out after less than this is not the application's fault.
constexpr std::chrono::milliseconds shortestTrial{20};

/// D-Bus's number for a call without a time limit; no timer runs for it.
constexpr int noTimeOut = std::numeric_limits<int>::max();

/// A different error from that of a silent application, which was asked.
QDBusMessage notSent(const QDBusMessage& request) {
  return request.createErrorReply(QDBusError::LimitsExceeded, QStringLiteral("not sent"));
}

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

/// Whether a D-Bus daemon answers the start of the handshake at the socket called `name`.
bool busGreets(int socket, const QByteArray& name, std::chrono::milliseconds limit) {
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

std::vector<QDBusMessage> BoundedCalls::call(const QDBusConnection& connection,
                                             const std::vector<QDBusMessage>& requests) {
  const auto allowance = budget_.allowance();
  const TurnBudget::Wait wait(budget_);

  std::vector<QDBusPendingCall> sent;
  sent.reserve(requests.size());
  for (const auto& request : requests) {
    // Sending thousands of requests takes time too. All of them share one deadline.
    const auto left = std::chrono::floor<std::chrono::milliseconds>(allowance - wait.elapsed()).count();
    const bool passes = left > 0 && !isSuspended(request.service());
    sent.push_back(passes ? connection.asyncCall(request, static_cast<int>(left))
                          : QDBusPendingCall::fromCompletedCall(notSent(request)));
  }
  std::vector<QDBusMessage> replies;
  replies.reserve(requests.size());
  for (std::size_t i = 0; i < sent.size(); ++i) {
    // This wait has no limit of its own, but the call has one and ends with an error then.
    sent[i].waitForFinished();
    replies.push_back(sent[i].reply());
    if (allowance >= shortestTrial && atspi::isTimeOut(replies.back()))
      suspend(connection, requests[i].service());
  }
  return replies;
}

bool BoundedCalls::reaches(const QString& busAddress) {
  const auto entries = busAddress.toUtf8().split(';');
  // The library tries one address after another, so a bad one anywhere is too many.
  if (!std::all_of(entries.begin(), entries.end(), isSocket)) return false;
  // Only the first is asked; the others are fallbacks for an address of another machine.
  const auto name = socketName(entries.constFirst());
  if (name.isEmpty()) return true;
  const auto allowance = std::chrono::floor<std::chrono::milliseconds>(budget_.allowance());
  const TurnBudget::Wait wait(budget_);
  const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  if (socket < 0) return false;
  const bool greets = busGreets(socket, name, allowance);
  ::close(socket);
  return greets;
}

bool BoundedCalls::isSuspended(const QString& service) {
  const auto found = unanswered_.find(service);
  if (found == unanswered_.end()) return false;
  // An error is an answer too; the bus sends one for an application that has ended.
  if (!found->second.isFinished()) return true;
  unanswered_.erase(found);
  return false;
}

void BoundedCalls::suspend(const QDBusConnection& connection, const QString& service) {
  if (unanswered_.contains(service)) return;
  // Applications that have ended: nobody asks about them again.
  std::erase_if(unanswered_, [](const auto& each) { return each.second.isFinished(); });
  // Not the bus's own Ping: toolkits answer it on a separate thread even while their main thread hangs.
  unanswered_.emplace(service, connection.asyncCall(
                                   atspi::request(rootOf(service), atspi::accessible, "GetRole"), noTimeOut));
}

}  // namespace tavelo::linuxdesktop
