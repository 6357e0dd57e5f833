#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "platform/BufferedRecognitionRequest.h"
#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/Speech.h"
#include "platform/recognizer/RecognitionTask.h"

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

  /// Why a recogniser for the locale would not be available, in English; empty when no reason is known yet.
  virtual std::string failure(const std::string& localeIdentifier) const = 0;

  std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest> makeAudioBufferRecognitionRequest() final;

  /// Always granted: nothing asks for permission here.
  void requestAuthorization(std::function<void(platform::SpeechAuthorizationStatus)> handler) final;

 protected:
  platform::MainQueue& mainQueue() const { return mainQueue_; }

 private:
  platform::MainQueue& mainQueue_;
  platform::Lifetime lifetime_;
};

/// A recogniser of an `EngineSpeech`. Main thread.
class EngineRecognizer : public platform::SpeechRecognizer {
 public:
  explicit EngineRecognizer(platform::MainQueue& mainQueue) : mainQueue_(mainQueue) {}

  /// The request must be a `platform::BufferedRecognitionRequest`; any other is answered with an error.
  std::shared_ptr<platform::SpeechRecognitionTask> recognitionTask(
      std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest> request,
      ResultHandler resultHandler) final;

 protected:
  /// How long `isAvailable` may wait for the engine to settle.
  static constexpr std::chrono::milliseconds availabilityWait{250};

  /// Has the engine recognise what `request` carries and report it to `task`. An engine that has been stopped
  /// does nothing.
  virtual void recognize(std::shared_ptr<RecognitionTask> task,
                         std::shared_ptr<platform::BufferedRecognitionRequest> request) = 0;

 private:
  platform::MainQueue& mainQueue_;
};

}  // namespace tavelo::recognizer
