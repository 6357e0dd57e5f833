#pragma once

#include <QByteArray>
#include <QObject>
#include <QTimer>
#include <QUrl>
#include <memory>
#include <optional>

#include "platform/AudioBuffer.h"
#include "platform/BufferedRecognitionRequest.h"
#include "platform/recognizer/Outcome.h"
#include "platform/recognizer/RecognitionTask.h"
#include "platform/recognizer/RunningTranscript.h"
#include "platform/recognizer/server/KeptFrames.h"

class QWebSocket;

namespace tavelo::recognizer {

/// One connection to a Vosk server, for one dictation. Lives on a thread with an event loop, which answers
/// the server's pings; created elsewhere and moved there before `open`.
///
/// Sends no sound before `transcribe`. Sends sound in frames of about 100 ms, longer ones when the server
/// falls behind, and no faster than the network takes it and the server answers; the rest waits in the
/// request. When the connection is lost, it connects twice more within three seconds and sends the sound
/// since the last finished utterance again. The dictation fails when the server owes an answer and is silent
/// for ten seconds, or sends far more than it was asked. The connection closes when no dictation uses it for
/// ten seconds.
class VoskServerConnection final : public QObject {
 public:
  /// `outcome` is settled when the server is reached or the connection fails. Any thread.
  VoskServerConnection(QUrl address, std::shared_ptr<Outcome> outcome);
  ~VoskServerConnection() override;

  void open();

  /// Sends what `request` carries, once the server is reached, and reports to `task`. Call it once.
  void transcribe(std::shared_ptr<RecognitionTask> task,
                  std::shared_ptr<platform::BufferedRecognitionRequest> request);

 private:
  class Wake;

  void connected();
  void disconnected();
  void lose();
  void receive(const QString& reply);
  void pump();
  bool sendWaitingSound();
  bool add(const platform::AudioBuffer& buffer);
  void sendFrame();
  void sendEnd();
  void watch();
  void fail(const char* reason);
  void close();

  const QUrl address_;
  const std::shared_ptr<Outcome> outcome_;
  std::unique_ptr<QWebSocket> socket_;
  QTimer watchdog_{this};
  QTimer writeCheck_{this};
  bool open_ = false;
  bool everOpen_ = false;
  /// Connections that were tried since the last finished utterance.
  int attempts_ = 0;
  bool over_ = false;

  std::shared_ptr<RecognitionTask> task_;
  std::shared_ptr<platform::BufferedRecognitionRequest> request_;
  std::shared_ptr<Wake> wake_;

  /// The sample rate that the server was told; absent before that.
  std::optional<double> sampleRate_;
  /// Sound for the next frame.
  QByteArray frame_;
  KeptFrames kept_;
  /// Answers that the server owes us. Some servers send more, so it goes negative after the end is sent.
  int owed_ = 0;
  /// Messages that came while the server owed no answer.
  int unasked_ = 0;
  bool endSent_ = false;
  RunningTranscript transcript_;
};

}  // namespace tavelo::recognizer
