#pragma once

#include <QObject>
#include <QTimer>
#include <QWebSocket>
#include <functional>

#include "tools/rehearsal-server/HeardSpeech.h"
#include "tools/rehearsal-server/RehearsalServerOptions.h"

namespace tavelo::rehearsal {

/// One client of the rehearsal server. Deletes itself when the connection ends. Main thread.
class RehearsalSession final : public QObject {
 public:
  /// Owns `socket` and is owned by `parent`.
  RehearsalSession(const RehearsalServerOptions& options, QWebSocket* socket, QObject* parent);

 private:
  void receiveText(const QString& message);
  void receiveSound(const QByteArray& sound);
  bool readConfig(const QString& message);
  void answerRunning();
  void answerFinal();
  void answer(const char* member);
  void later(std::function<void()> step);
  void ping();

  const RehearsalServerOptions options_;
  QWebSocket& socket_;
  HeardSpeech speech_;
  double sampleRate_;
  int frames_ = 0;
  bool ended_ = false;
  bool alive_ = true;
  QTimer heartbeat_{this};
};

}  // namespace tavelo::rehearsal
