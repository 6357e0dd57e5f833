#pragma once

#include <QByteArray>
#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QTcpServer>
#include <QTcpSocket>
#include <future>
#include <memory>
#include <optional>
#include <string>

namespace tavelo {

/// A server that sends what it likes to one client, as fast as it can, and reads nothing after the client's
/// greeting.
class HostileServer final {
 public:
  /// In `once`, this becomes the answer that opens the WebSocket.
  inline static const QByteArray handshake = "<handshake>";

  /// Sends `once`, then `again` over and over: until the client hangs up, or `most` bytes are sent, or 20 s
  /// are over.
  HostileServer(QByteArray once, QByteArray again, qint64 most) {
    std::promise<quint16> port;
    auto listening = port.get_future();
    sent_ = std::async(std::launch::async, [=, port = std::move(port)]() mutable {
      return attack(port, std::move(once), again, most);
    });
    address_ = "ws://127.0.0.1:" + std::to_string(listening.get());
  }

  const std::string& address() const { return address_; }

  /// How many bytes were sent when the client hung up; absent if it did not. Waits for it.
  std::optional<qint64> sentUntilHangUp() { return sent_.get(); }

  /// A WebSocket frame of at most 125 bytes, the last of its message unless said otherwise.
  static QByteArray frame(char kind, const QByteArray& payload, bool last = true) {
    return QByteArray(1, static_cast<char>(kind | (last ? 0x80 : 0))) +
           QByteArray(1, static_cast<char>(payload.size())) + payload;
  }

 private:
  static std::optional<qint64> attack(std::promise<quint16>& port, QByteArray once, const QByteArray& again,
                                      qint64 most) {
    const QDeadlineTimer deadline{20'000};
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    port.set_value(server.serverPort());
    if (!server.waitForNewConnection(20'000)) return std::nullopt;
    const std::unique_ptr<QTcpSocket> socket{server.nextPendingConnection()};
    QByteArray greeting;
    while (!greeting.contains("\r\n\r\n") && socket->waitForReadyRead(20'000)) greeting += socket->readAll();
    // Waiting for a write reads too.
    socket->setReadBufferSize(1);
    socket->write(once.replace(handshake, answerTo(greeting)));
    qint64 sent = 0;
    while (sent < most && !deadline.hasExpired()) {
      if (socket->bytesToWrite() == 0) sent += socket->write(again);
      socket->waitForBytesWritten(200);
      if (socket->state() != QAbstractSocket::ConnectedState) return sent;
    }
    return std::nullopt;
  }

  static QByteArray answerTo(const QByteArray& greeting) {
    const auto name = greeting.toLower().indexOf("sec-websocket-key: ") + 19;
    const QByteArray key = greeting.mid(name, greeting.indexOf('\r', name) - name);
    const auto accepted =
        QCryptographicHash::hash(key + "258EAFA5-E914-47DA-95CA-C5AB0DC85B11", QCryptographicHash::Sha1);
    return "HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
           "Sec-WebSocket-Accept: " +
           accepted.toBase64() + "\r\n\r\n";
  }

  std::string address_;
  std::future<std::optional<qint64>> sent_;
};

}  // namespace tavelo
