#include "app/SingleInstance.h"

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <optional>
#include <utility>

#include <sys/file.h>
#include <unistd.h>

namespace tavelo {
namespace {

/// The longest line that either side accepts, with its line feed, in bytes.
constexpr qint64 longestLine = 32;
constexpr const char* takenLine = "taken\n";
constexpr std::array messageLines{std::pair{InstanceMessage::showMenu, "show-menu\n"},
                                  std::pair{InstanceMessage::insertLastText, "insert-last\n"}};
/// Time between two attempts to reach a program that is still starting.
constexpr unsigned long retryMilliseconds = 20;

std::optional<InstanceMessage> messageOf(const QByteArray& line) {
  const auto found =
      std::ranges::find_if(messageLines, [&](const auto& each) { return line == each.second; });
  if (found == messageLines.end()) return std::nullopt;
  return found->first;
}

const char* lineOf(InstanceMessage message) {
  return std::ranges::find(messageLines, message, [](const auto& each) { return each.first; })->second;
}

int millisecondsLeft(const QDeadlineTimer& deadline) {
  return static_cast<int>(std::max<qint64>(deadline.remainingTime(), 0));
}

/// Whether only the user may write to the folder. Anyone else who may could replace the lock and the socket.
bool isOwn(const QString& folder) {
  const QFileInfo info(folder);
  return info.isDir() && info.ownerId() == ::geteuid() &&
         !(info.permissions() & (QFileDevice::WriteGroup | QFileDevice::WriteOther));
}

InstanceAnswer ask(QLocalSocket& socket, InstanceMessage message, const QDeadlineTimer& deadline) {
  socket.write(lineOf(message));
  while (!socket.canReadLine()) {
    if (socket.bytesAvailable() >= longestLine || !socket.waitForReadyRead(millisecondsLeft(deadline))) {
      return InstanceAnswer::silent;
    }
  }
  return socket.readLine(longestLine) == takenLine ? InstanceAnswer::taken : InstanceAnswer::silent;
}

}  // namespace

QString SingleInstance::runtimeFolder() {
  return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
}

SingleInstance::SingleInstance(const QString& folder, std::chrono::milliseconds patience)
    : socketPath_(folder + "/tavelo.socket"), patience_(patience), lock_(folder + "/tavelo.lock") {
  if (folder.isEmpty()) errorText_ = "there is no runtime folder of your own (XDG_RUNTIME_DIR)";
}

bool SingleInstance::claim() {
  if (!errorText_.isEmpty()) return false;
  const QString folder = QFileInfo(lock_.fileName()).path();
  if (!isOwn(folder)) {
    errorText_ = folder + ": not a folder that you alone may write to";
    return false;
  }
  if (!lock_.open(QIODevice::ReadWrite, QFileDevice::ReadOwner | QFileDevice::WriteOwner)) {
    errorText_ = lock_.fileName() + ": " + lock_.errorString();
    return false;
  }
  if (::flock(lock_.handle(), LOCK_EX | LOCK_NB) == 0) return true;
  if (errno != EWOULDBLOCK) errorText_ = lock_.fileName() + ": " + std::strerror(errno);
  lock_.close();
  return false;
}

bool SingleInstance::listen(std::function<void(InstanceMessage)> received) {
  received_ = std::move(received);
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  // We hold the lock, so nobody listens on this socket any more.
  QLocalServer::removeServer(socketPath_);
  QObject::connect(&server_, &QLocalServer::newConnection, &server_, [this] {
    while (auto* peer = server_.nextPendingConnection()) serve(*peer);
  });
  if (server_.listen(socketPath_)) return true;
  errorText_ = socketPath_ + ": " + server_.errorString();
  return false;
}

void SingleInstance::serve(QLocalSocket& peer) {
  QObject::connect(&peer, &QLocalSocket::disconnected, &peer, &QObject::deleteLater);
  const auto peers = server_.findChildren<QLocalSocket*>();
  const auto connected = std::ranges::count_if(
      peers, [](const auto* each) { return each->state() != QLocalSocket::UnconnectedState; });
  if (connected > mostPeers) return peer.abort();
  peer.setReadBufferSize(longestLine);
  QTimer::singleShot(patience_, &peer, [&peer] { peer.abort(); });
  QObject::connect(&peer, &QLocalSocket::readyRead, &peer, [this, &peer] { read(peer); });
  // Data may have arrived before readyRead was connected.
  read(peer);
}

void SingleInstance::read(QLocalSocket& peer) {
  if (!peer.canReadLine()) {
    if (peer.bytesAvailable() >= longestLine) peer.abort();
    return;
  }
  const auto message = messageOf(peer.readLine(longestLine));
  // One message per connection.
  QObject::disconnect(&peer, &QLocalSocket::readyRead, nullptr, nullptr);
  if (!message) return peer.abort();
  peer.write(takenLine);
  peer.disconnectFromServer();
  received_(*message);
}

InstanceAnswer SingleInstance::send(InstanceMessage message, bool waitsForStart) const {
  const QDeadlineTimer deadline(patience_);
  for (;;) {
    QLocalSocket socket;
    socket.setReadBufferSize(longestLine);
    socket.connectToServer(socketPath_);
    if (socket.waitForConnected(millisecondsLeft(deadline))) return ask(socket, message, deadline);
    if (!waitsForStart || deadline.hasExpired()) return InstanceAnswer::nobody;
    QThread::msleep(retryMilliseconds);
  }
}

}  // namespace tavelo
