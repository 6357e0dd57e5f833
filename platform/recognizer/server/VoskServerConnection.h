#pragma once

#include <QByteArray>
#include <QObject>
#include <QTimer>
#include <QUrl>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/AudioBuffer.h"
#include "platform/BufferedRecognitionRequest.h"
#include "platform/PlatformError.h"
#include "platform/Speech.h"
#include "platform/recognizer/RunningTranscript.h"
#include "platform/recognizer/server/ConnectionOutcome.h"

class QWebSocket;

namespace tavelo::recognizer {

/// One connection to a Vosk server, for one dictation. Thread of its own loop, which answers the server's
/// pings; made elsewhere and moved there before `open`.
///
/// No sound is sent before `transcribe`. Sound goes out in pieces of about 100 ms, larger ones when the
/// server falls behind, and no faster than the network takes it; what waits stays in the request. A server
/// that says nothing for ten seconds while it owes an answer has failed; a connection that no dictation uses
/// in that time is closed.
class VoskServerConnection final : public QObject {
 public:
  /// Called on the connection's thread; after a final result or an error no more comes.
  using Reporter = std::function<void(std::optional<platform::SpeechRecognitionResult>,
                                      std::optional<platform::PlatformError>)>;

  VoskServerConnection(QUrl address, std::shared_ptr<ConnectionOutcome> outcome);
  ~VoskServerConnection() override;

  void open();

  /// Sends what the request carries, once the server is reached. Once.
  void transcribe(std::shared_ptr<platform::BufferedRecognitionRequest> request, Reporter report);

 private:
  class Wake;

  void connected();
  void disconnected();
  void receive(const QString& reply);
  void pump();
  bool sendWaitingSound();
  bool add(const platform::AudioBuffer& buffer);
  void sendFrame();
  void sendEnd();
  void watch();
  void fail(const char* reason);
  void finish(std::optional<platform::SpeechRecognitionResult> result,
              std::optional<platform::PlatformError> error);

  const QUrl address_;
  const std::shared_ptr<ConnectionOutcome> outcome_;
  std::unique_ptr<QWebSocket> socket_;
  QTimer watchdog_{this};
  bool open_ = false;
  bool over_ = false;

  std::shared_ptr<platform::BufferedRecognitionRequest> request_;
  Reporter report_;
  bool reportsPartialResults_ = false;
  std::shared_ptr<Wake> wake_;

  /// The format that the server was told, once it was.
  std::optional<double> sampleRate_;
  /// Bytes of sound for the next frame.
  QByteArray frame_;
  std::vector<std::int16_t> mono_;
  /// Answers that are due; some servers send more.
  int owed_ = 0;
  bool endSent_ = false;
  recognizer::RunningTranscript transcript_;
  std::string reported_;
};

}  // namespace tavelo::recognizer
