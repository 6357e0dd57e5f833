#include "platform/recognizer/server/ConnectionError.h"

#include <QRegularExpression>
#include <QWebSocket>

#include "language/Language.h"
#include "language/Texts.h"

namespace tavelo::recognizer {
namespace {

using language::say;
namespace words = language::words;

/// What the answer to our handshake says, if it is another one than a recogniser gives; empty if there was
/// none.
std::string refusedHandshake(const QWebSocket& socket) {
  // Qt tells the status in words alone.
  static const QRegularExpression status{"http status code: (\\d+)",
                                         QRegularExpression::CaseInsensitiveOption};
  const auto words = socket.errorString();
  const auto found = status.match(words);
  if (found.hasMatch()) return found.captured(1).toStdString();
  return words.contains("processHandshake") ? "?" : "";
}

}  // namespace

// Qt's own words are for people who know Qt, and English.
std::string connectionError(const QWebSocket& socket) {
  if (const auto status = refusedHandshake(socket); !status.empty()) {
    if (status == "503") return say(words::serverIsFull);
    return status == "?" ? say(words::noRecogniserThere) : say(words::serverRefuses, {status});
  }
  if (language::current() == language::Language::english) return socket.errorString().toStdString();
  switch (socket.error()) {
    case QAbstractSocket::ConnectionRefusedError:
      return say(words::connectionRefused);
    case QAbstractSocket::HostNotFoundError:
      return say(words::hostNotFound);
    case QAbstractSocket::RemoteHostClosedError:
      return say(words::connectionClosed);
    case QAbstractSocket::SocketTimeoutError:
      return say(words::connectionTimedOut);
    case QAbstractSocket::SslHandshakeFailedError:
      return say(words::notSecure);
    case QAbstractSocket::NetworkError:
      return say(words::noNetwork);
    default:
      return say(words::networkFailure, {std::to_string(socket.error())});
  }
}

std::string silenceError() { return say(words::noAnswerAtAll); }

}  // namespace tavelo::recognizer
