#pragma once

#include <QThread>
#include <QUrl>
#include <memory>
#include <string>
#include <vector>

#include "platform/Speech.h"
#include "platform/recognizer/server/ConnectionOutcome.h"
#include "platform/recognizer/server/VoskServerDictation.h"

namespace tavelo::platform {
class MainQueue;
}

namespace tavelo::recognizer {

/// The server at one address and the thread on which all talking to it is done; it sleeps while there is
/// none. Needs an application object, but not its loop. Main thread.
class VoskServer final {
 public:
  /// A connection that has been asked for, and what becomes of it. Both null after `stop`.
  struct Attempt {
    std::unique_ptr<ConnectionHandle> connection;
    std::shared_ptr<ConnectionOutcome> outcome;
  };

  VoskServer(platform::MainQueue& mainQueue, QUrl address);

  /// Like `stop`.
  ~VoskServer();

  VoskServer(const VoskServer&) = delete;
  VoskServer& operator=(const VoskServer&) = delete;

  /// Begins to connect.
  Attempt connect();

  /// Waits for a connection, 250 ms at most, and says whether a dictation can count on it. A server that is
  /// too far away for an answer in that time can be counted on when the attempt before got through at last;
  /// one that nothing is heard of cannot. An attempt that is not good enough is taken over.
  bool await(Attempt& attempt);

  /// Has the server recognise what the request carries. The dictation is kept until it ends.
  std::shared_ptr<VoskServerDictation> recognize(
      Attempt attempt, const std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest>& request,
      platform::SpeechRecognizer::ResultHandler resultHandler);

  /// Why the last connection that was waited for could not be had, in English; empty when it could.
  std::string failure() const { return failure_; }

  /// Ends every connection, and the thread; nothing is reported any more.
  void stop();

 private:
  platform::MainQueue& mainQueue_;
  const QUrl address_;
  std::vector<std::shared_ptr<VoskServerDictation>> dictations_;
  std::string failure_;
  /// The last attempt that took longer than the wait, and whether such attempts get through.
  Attempt late_;
  bool lateOnesGetThrough_ = false;
  bool stopped_ = false;
  QThread thread_;
};

}  // namespace tavelo::recognizer
