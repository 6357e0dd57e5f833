#pragma once

#include <QPointer>
#include <memory>
#include <optional>

#include "platform/Speech.h"

namespace tavelo::recognizer {

class VoskServerConnection;

/// Ends a connection, from the main thread, when it is let go. None may be let go while its thread ends.
class ConnectionHandle final {
 public:
  explicit ConnectionHandle(VoskServerConnection* connection);
  ~ConnectionHandle();
  ConnectionHandle(const ConnectionHandle&) = delete;
  ConnectionHandle& operator=(const ConnectionHandle&) = delete;

  /// Null once the thread has ended.
  VoskServerConnection* get() const;

 private:
  QPointer<VoskServerConnection> connection_;
};

/// A recognition by a server, for whoever asked for it. Main thread.
class VoskServerDictation final : public platform::SpeechRecognitionTask {
 public:
  VoskServerDictation(std::unique_ptr<ConnectionHandle> connection,
                      platform::SpeechRecognizer::ResultHandler resultHandler);
  ~VoskServerDictation() override;

  /// Nothing is reported after this, and no more sound is sent.
  void cancel() override;

  /// Hands a report on; the last one ends the connection.
  void deliver(const std::optional<platform::SpeechRecognitionResult>& result,
               const std::optional<platform::PlatformError>& error);

  bool isOver() const { return connection_ == nullptr; }

 private:
  std::unique_ptr<ConnectionHandle> connection_;
  platform::SpeechRecognizer::ResultHandler resultHandler_;
};

}  // namespace tavelo::recognizer
