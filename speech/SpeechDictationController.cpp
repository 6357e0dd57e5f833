#include "speech/SpeechDictationController.h"

#include <utility>

#include "platform/Platform.h"

namespace tavelo {
namespace {

constexpr platform::AudioBus inputBus = 0;
constexpr std::uint32_t tapBufferSize = 1024;  // frames

}  // namespace

SpeechDictationController::SpeechDictationController()
    : speech_(platform::current().speech), audioEngine_(platform::current().audio.makeEngine()) {}

SpeechDictationController::~SpeechDictationController() {
  if (state_ != DictationState::listening) return;
  // Quitting drops a running dictation: no callback, no transcript.
  audioEngine_->stop();
  audioEngine_->removeTap(inputBus);
  if (recognitionTask_) recognitionTask_->cancel();
}

void SpeechDictationController::start(const std::string& localeIdentifier) {
  if (state_ == DictationState::listening) return;
  const auto recognizer = speech_.makeRecognizer(localeIdentifier);
  if (!recognizer) {
    report(platform::current().names.systemAtStart + " không khởi tạo được bộ nhận diện tiếng Việt.");
    return;
  }
  if (!recognizer->isAvailable()) {
    report("Bộ nhận diện giọng nói hiện không sẵn sàng. Hãy kiểm tra kết nối hoặc thử lại.");
    return;
  }
  latestTranscript_.clear();
  if (recognitionTask_) recognitionTask_->cancel();
  recognitionTask_.reset();
  recognitionRequest_ = speech_.makeAudioBufferRecognitionRequest();
  recognitionRequest_->setShouldReportPartialResults(true);

  const auto format = audioEngine_->inputFormat(inputBus);
  audioEngine_->removeTap(inputBus);
  // Runs on the capture thread and may outlive the request, so it touches nothing else.
  audioEngine_->installTap(
      inputBus, tapBufferSize, format,
      [request = std::weak_ptr(recognitionRequest_)](const platform::AudioBuffer& buffer) {
        if (const auto alive = request.lock()) alive->append(buffer);
      });
  audioEngine_->prepare();
  if (const auto error = audioEngine_->start()) {
    audioEngine_->removeTap(inputBus);
    recognitionRequest_.reset();
    report("Không mở được microphone: " + error->localizedDescription);
    return;
  }
  const auto dictation = ++currentDictation_;
  setState(DictationState::listening);
  // The state callback may already have ended this dictation.
  if (!isRunning(dictation)) return;
  recognitionTask_ = recognizer->recognitionTask(
      recognitionRequest_,
      lifetime_.guard([this, dictation](const std::optional<platform::SpeechRecognitionResult>& result,
                                        const std::optional<platform::PlatformError>& error) {
        handle(dictation, result, error);
      }));
}

void SpeechDictationController::handle(std::uint64_t dictation,
                                       const std::optional<platform::SpeechRecognitionResult>& result,
                                       const std::optional<platform::PlatformError>& error) {
  // A late result of a cancelled task must not reach or end the next dictation. Each callback below may start
  // that dictation, so the question is asked again after each.
  if (!isRunning(dictation)) return;
  if (result) {
    latestTranscript_ = result->formattedString;
    // Not the member, which a start inside the callback clears.
    if (onPartialTranscript) onPartialTranscript(result->formattedString);
    if (result->isFinal && isRunning(dictation)) finish(true);
  }
  if (error && isRunning(dictation)) finish(!latestTranscript_.empty());
}

bool SpeechDictationController::isRunning(std::uint64_t dictation) const {
  return state_ == DictationState::listening && dictation == currentDictation_;
}

void SpeechDictationController::stop() { finish(true); }

void SpeechDictationController::cancel() {
  if (state_ != DictationState::listening) return;
  // Before the audio ends: until then a recogniser would still hurry to say what it has heard.
  if (recognitionTask_) recognitionTask_->cancel();
  finish(false);
}

void SpeechDictationController::finish(bool emitTranscript) {
  if (state_ != DictationState::listening) return;
  audioEngine_->stop();
  audioEngine_->removeTap(inputBus);
  const auto dictation = currentDictation_;
  // Keeps the request while it delivers the last words. A callback may end this dictation meanwhile.
  if (const auto request = recognitionRequest_) request->endAudio();
  if (!isRunning(dictation)) return;
  if (recognitionTask_) recognitionTask_->cancel();
  recognitionTask_.reset();
  recognitionRequest_.reset();
  // A copy, because a start inside either callback clears the member.
  const std::string transcript = latestTranscript_;
  setState(DictationState::idle);
  if (emitTranscript && onTranscriptReady) onTranscriptReady(transcript);
}

void SpeechDictationController::setState(DictationState state) {
  state_ = state;
  if (onStateChange) onStateChange(state);
}

void SpeechDictationController::report(const std::string& message) const {
  if (onError) onError(message);
}

}  // namespace tavelo
