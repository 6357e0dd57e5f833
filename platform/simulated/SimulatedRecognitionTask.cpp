#include "platform/simulated/SimulatedRecognitionTask.h"

#include <optional>
#include <utility>

#include "platform/simulated/SimulatedRecognitionRequest.h"
#include "platform/simulated/World.h"

namespace tavelo::simulated {
namespace {

std::string textOf(const RecognitionStep& step) {
  std::string text;
  if (step.transcript) text = (step.isFinal ? "final " : "partial ") + quoted(*step.transcript);
  if (step.error) text += (text.empty() ? "error " : ", error ") + quoted(*step.error);
  return text;
}

}  // namespace

SimulatedRecognitionTask::SimulatedRecognitionTask(World& world,
                                                   std::shared_ptr<SimulatedRecognitionRequest> request,
                                                   platform::SpeechRecognizer::ResultHandler handler,
                                                   RecognitionScript script)
    : world_(world),
      request_(std::move(request)),
      handler_(std::move(handler)),
      script_(std::move(script)),
      partialResults_(request_->shouldReportPartialResults()) {}

void SimulatedRecognitionTask::begin() {
  for (const RecognitionStep& step : script_.steps) {
    world_.loop().asyncAfter(step.after, [self = shared_from_this(), &step] { self->answer(step); });
  }
}

void SimulatedRecognitionTask::cancel() {
  world_.requireMainThread("SpeechRecognitionTask::cancel");
  if (cancelled_) return;
  cancelled_ = true;
  request_.reset();
  if (!finished_) world_.report(WorldEvent::Kind::speech, "task cancelled");
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
  world_.report(WorldEvent::Kind::speech, textOf(step) + (cancelled_ ? " after the cancel" : ""));
  // A copy: the handler may cancel the task.
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
