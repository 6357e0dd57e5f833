#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/BufferedRecognitionRequest.h"
#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/Speech.h"
#include "platform/UserNotifications.h"
#include "platform/recognizer/Outcome.h"
#include "platform/recognizer/RecognitionTask.h"
#include "platform/recognizer/WaitingNotice.h"

namespace tavelo::recognizer {

/// What all our engines share: the authorisation and the requests.
///
/// An engine plugs in with two classes. A subclass of `EngineSpeech` makes recognisers for locales. A
/// subclass of `EngineRecognizer` starts dictations: the engine takes sound out of the request and reports
/// transcripts to the task. Main thread, unless `platform::Speech` says otherwise.
class EngineSpeech : public platform::Speech {
 public:
  /// `mainQueue` must outlive this object and its recognisers.
  explicit EngineSpeech(platform::MainQueue& mainQueue) : mainQueue_(mainQueue) {}
  EngineSpeech(const EngineSpeech&) = delete;
  EngineSpeech& operator=(const EngineSpeech&) = delete;

  /// Recognisers made from now on tell the user through these that a dictation waits for the engine, or that
  /// it ended before the engine was ready, because then nothing was heard. `notifications` must outlive them.
  void notifyThrough(platform::UserNotifications& notifications) {
    notice_ = std::make_shared<WaitingNotice>(mainQueue_, notifications);
  }

  /// Why a dictation in the locale cannot work, in English; empty when no reason is known. Waits at most
  /// `limit` for the model to load or the server to answer.
  virtual std::string failure(const std::string& localeIdentifier, std::chrono::milliseconds limit) = 0;

  std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest> makeAudioBufferRecognitionRequest() final;

  /// Always granted: nothing asks for permission here.
  void requestAuthorization(std::function<void(platform::SpeechAuthorizationStatus)> handler) final;

 protected:
  platform::MainQueue& mainQueue() const { return mainQueue_; }
  /// Null if there are none.
  const std::shared_ptr<WaitingNotice>& notice() const { return notice_; }

 private:
  platform::MainQueue& mainQueue_;
  std::shared_ptr<WaitingNotice> notice_;
  platform::Lifetime lifetime_;
};

/// A recogniser of an `EngineSpeech`. Main thread.
class EngineRecognizer : public platform::SpeechRecognizer {
 public:
  /// `notice` may be null.
  EngineRecognizer(platform::MainQueue& mainQueue, std::shared_ptr<WaitingNotice> notice)
      : mainQueue_(mainQueue), notice_(std::move(notice)) {}

  /// False only when the engine is known to have failed. One that is still on its way is available: the sound
  /// is kept until it is ready.
  bool isAvailable() final { return engine()->wait(availabilityWait) != Outcome::State::failed; }

  /// The request must be a `platform::BufferedRecognitionRequest`; any other is answered with an error.
  std::shared_ptr<platform::SpeechRecognitionTask> recognitionTask(
      std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest> request,
      ResultHandler resultHandler) final;

 protected:
  /// How it turns out to make the engine ready. Never null.
  virtual std::shared_ptr<const Outcome> engine() = 0;

  /// Has the engine recognise what `request` carries and report it to `task`. An engine that has been stopped
  /// does nothing.
  virtual void recognize(std::shared_ptr<RecognitionTask> task,
                         std::shared_ptr<platform::BufferedRecognitionRequest> request) = 0;

 private:
  /// How long `isAvailable` may wait for the engine to settle.
  static constexpr std::chrono::milliseconds availabilityWait{250};

  platform::MainQueue& mainQueue_;
  const std::shared_ptr<WaitingNotice> notice_;
};

}  // namespace tavelo::recognizer
