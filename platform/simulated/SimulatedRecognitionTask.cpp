#include "platform/simulated/SimulatedRecognitionTask.h"

#include <optional>
#include <utility>

#include "platform/simulated/SimulatedLoop.h"
#include "platform/simulated/SimulatedRecognitionRequest.h"

namespace tavelo::simulated {

SimulatedRecognitionTask::SimulatedRecognitionTask(SimulatedLoop& loop,
                                                   std::shared_ptr<SimulatedRecognitionRequest> request,
                                                   platform::SpeechRecognizer::ResultHandler handler,
                                                   RecognitionScript script)
    : loop_(loop),
      request_(std::move(request)),
      handler_(std::move(handler)),
      script_(std::move(script)),
      partialResults_(request_->shouldReportPartialResults()) {}

void SimulatedRecognitionTask::begin() {
  for (const RecognitionStep& step : script_.steps) {
    loop_.asyncAfter(step.after, [self = shared_from_this(), &step] { self->answer(step); });
  }
}

void SimulatedRecognitionTask::cancel() {
  cancelled_ = true;
  request_.reset();
  if (!script_.answersAfterCancel) handler_ = nullptr;
}

bool SimulatedRecognitionTask::answer(const RecognitionStep& step) {
  if (finished_ || !handler_) return false;
  const bool ends = step.isFinal || step.error.has_value();
  if (!ends && !partialResults_) return true;
  std::optional<platform::SpeechRecognitionResult> result;
  if (step.transcript) result = platform::SpeechRecognitionResult{*step.transcript, step.isFinal};
  std::optional<platform::PlatformError> error;
  if (step.error) error = platform::PlatformError{*step.error};
  // A copy, because the handler may cancel the task.
  const auto handler = handler_;
  if (ends) {
    finished_ = true;
    handler_ = nullptr;
    request_.reset();
  }
  handler(result, error);
  return true;
}

}  // namespace tavelo::simulated
