#pragma once

#include <string>

class QWebSocket;

namespace tavelo::recognizer {

/// Why a socket has no connection to a recogniser: a clause in the current language. The socket's thread.
std::string connectionError(const QWebSocket& socket);

/// The same for one that does not answer.
std::string silenceError();

}  // namespace tavelo::recognizer
