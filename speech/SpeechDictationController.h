#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/Audio.h"
#include "platform/Lifetime.h"
#include "platform/Speech.h"
#include "speech/DictationState.h"

namespace tavelo {

/// Turns the microphone's sound into a running transcript, one dictation at a time.
///
/// A dictation lasts until `stop`, `cancel`, a final result or a recognition error; there are no timers. A
/// stop does not wait for the recogniser: the transcript is that of the last result that arrived. Never asks
/// for permission. Main thread only. Callbacks are called directly, never through a queue, and may call
/// `start`, `stop` and `cancel`.
class SpeechDictationController final {
 public:
  SpeechDictationController();
  ~SpeechDictationController();
  SpeechDictationController(const SpeechDictationController&) = delete;
  SpeechDictationController& operator=(const SpeechDictationController&) = delete;

  /// Begins a dictation in this locale, for example "vi_VN". Does nothing while listening. If it fails, it
  /// calls `onError` and the controller stays idle.
  void start(const std::string& localeIdentifier);

  /// Ends the dictation and passes its transcript to `onTranscriptReady`, even if it is empty. Does nothing
  /// while idle.
  void stop();

  /// Ends the dictation and drops what was heard: nothing is passed to `onTranscriptReady`. Does nothing
  /// while idle.
  void cancel();

  DictationState state() const { return state_; }

  /// Called with the transcript when a dictation ends, after `onStateChange(idle)`. Not called when it is
  /// cancelled, or when a recognition error ends it before anything was recognised.
  std::function<void(const std::string&)> onTranscriptReady;

  /// Called with the whole running transcript after every recognition result.
  std::function<void(const std::string&)> onPartialTranscript;

  /// Called after every change of `state`.
  std::function<void(DictationState)> onStateChange;

  /// Called with a message for the user when a dictation cannot start.
  std::function<void(const std::string&)> onError;

 private:
  void finish(bool emitTranscript);
  void setState(DictationState state);
  void report(const std::string& message) const;
  bool isRunning(std::uint64_t dictation) const;
  void handle(std::uint64_t dictation, const std::optional<platform::SpeechRecognitionResult>& result,
              const std::optional<platform::PlatformError>& error);

  platform::Speech& speech_;
  std::unique_ptr<platform::AudioEngine> audioEngine_;
  std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest> recognitionRequest_;
  std::shared_ptr<platform::SpeechRecognitionTask> recognitionTask_;
  std::string latestTranscript_;
  DictationState state_ = DictationState::idle;
  /// Counts the dictations. Ties a result to the dictation that asked for it.
  std::uint64_t currentDictation_ = 0;
  platform::Lifetime lifetime_;
};

}  // namespace tavelo
