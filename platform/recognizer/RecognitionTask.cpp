#include "platform/recognizer/RecognitionTask.h"

#include <utility>

namespace tavelo::recognizer {

using platform::PlatformError;
using platform::SpeechRecognitionResult;

RecognitionTask::RecognitionTask(platform::MainQueue& mainQueue, bool partialResults,
                                 platform::SpeechRecognizer::ResultHandler resultHandler)
    : mainQueue_(mainQueue), partialResults_(partialResults), resultHandler_(std::move(resultHandler)) {}

void RecognitionTask::onEnd(std::function<void()> ended) { ended_ = std::move(ended); }

void RecognitionTask::cancel() {
  over_ = true;
  resultHandler_ = nullptr;
  if (const auto ended = std::exchange(ended_, nullptr)) ended();
}

void RecognitionTask::reportPartial(std::string transcript) {
  if (!partialResults_ || transcript == reported_) return;
  reported_ = transcript;
  report(SpeechRecognitionResult{std::move(transcript), false}, std::nullopt);
}

void RecognitionTask::reportFinal(std::string transcript) {
  report(SpeechRecognitionResult{std::move(transcript), true}, std::nullopt);
}

void RecognitionTask::fail(const char* reason) { report(std::nullopt, PlatformError{reason}); }

void RecognitionTask::report(std::optional<SpeechRecognitionResult> result,
                             std::optional<PlatformError> error) {
  if (over_) return;
  mainQueue_.async([self = shared_from_this(), result = std::move(result), error = std::move(error)] {
    self->deliver(result, error);
  });
}

void RecognitionTask::deliver(const std::optional<SpeechRecognitionResult>& result,
                              const std::optional<PlatformError>& error) {
  // Call a copy: the handler may cancel this task, which drops the member.
  const auto handler = resultHandler_;
  if (error || (result && result->isFinal)) cancel();
  if (handler) handler(result, error);
}

}  // namespace tavelo::recognizer
