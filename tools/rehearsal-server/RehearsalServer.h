#pragma once

#include <QWebSocketServer>
#include <cstdint>
#include <string>

#include "tools/rehearsal-server/RehearsalServerOptions.h"

namespace tavelo::rehearsal {

/// Speaks the Vosk servers' protocol on the loopback address, and recognises nothing: it answers with a given
/// transcript, word by word as sound that is not silent arrives. For tests and demonstrations. Main thread.
class RehearsalServer final {
 public:
  explicit RehearsalServer(RehearsalServerOptions options);

  /// False when the port cannot be had; `failure` says why.
  bool listen();

  std::string failure() const;
  std::uint16_t port() const;

 private:
  const RehearsalServerOptions options_;
  QWebSocketServer server_;
};

}  // namespace tavelo::rehearsal
