#include "platform/simulated/SimulatedRecognitionRequest.h"

#include <utility>

namespace tavelo::simulated {

RequestRecord::State RequestRecord::state() const {
  const std::lock_guard lock{mutex_};
  return state_;
}

SimulatedRecognitionRequest::SimulatedRecognitionRequest(std::shared_ptr<RequestRecord> record)
    : record_(std::move(record)) {}

SimulatedRecognitionRequest::~SimulatedRecognitionRequest() {
  const std::lock_guard lock{record_->mutex_};
  record_->state_.released = true;
}

void SimulatedRecognitionRequest::setShouldReportPartialResults(bool wanted) {
  const std::lock_guard lock{record_->mutex_};
  record_->state_.partialResults = wanted;
}

void SimulatedRecognitionRequest::append(const platform::AudioBuffer& buffer) {
  const std::lock_guard lock{record_->mutex_};
  RequestRecord::State& state = record_->state_;
  if (state.ended || buffer.format.channelCount == 0) return;
  state.frames += buffer.samples.size() / buffer.format.channelCount;
}

void SimulatedRecognitionRequest::endAudio() {
  const std::lock_guard lock{record_->mutex_};
  record_->state_.ended = true;
}

}  // namespace tavelo::simulated
