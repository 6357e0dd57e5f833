#include "platform/BufferedRecognitionRequest.h"

#include <utility>

namespace tavelo::platform {
namespace {

Seconds durationOf(const AudioBuffer& buffer) {
  const double samplesPerSecond = buffer.format.sampleRate * buffer.format.channelCount;
  return Seconds{samplesPerSecond > 0 ? static_cast<double>(buffer.samples.size()) / samplesPerSecond : 0.0};
}

}  // namespace

void BufferedRecognitionRequest::setShouldReportPartialResults(bool wanted) {
  const std::lock_guard lock{mutex_};
  partialResults_ = wanted;
}

bool BufferedRecognitionRequest::shouldReportPartialResults() const {
  const std::lock_guard lock{mutex_};
  return partialResults_;
}

void BufferedRecognitionRequest::append(const AudioBuffer& buffer) {
  {
    const std::lock_guard lock{mutex_};
    const Seconds duration = durationOf(buffer);
    if (ended_ || waitingDuration_ + duration > bound) return;
    waitingDuration_ += duration;
    waiting_.push_back(buffer);
  }
  notify();
}

void BufferedRecognitionRequest::endAudio() {
  {
    const std::lock_guard lock{mutex_};
    if (ended_) return;
    ended_ = true;
  }
  notify();
}

void BufferedRecognitionRequest::onArrival(std::function<void()> arrived) {
  bool waits = false;
  {
    const std::lock_guard lock{mutex_};
    arrived_ = std::move(arrived);
    waits = ended_ || !waiting_.empty();
  }
  if (waits) notify();
}

BufferedRecognitionRequest::Taken BufferedRecognitionRequest::take() {
  const std::lock_guard lock{mutex_};
  if (waiting_.empty()) return {std::nullopt, ended_};
  Taken taken{std::move(waiting_.front()), false};
  waiting_.pop_front();
  waitingDuration_ -= durationOf(*taken.buffer);
  return taken;
}

void BufferedRecognitionRequest::notify() {
  std::function<void()> arrived;
  {
    const std::lock_guard lock{mutex_};
    arrived = arrived_;
  }
  if (arrived) arrived();
}

}  // namespace tavelo::platform
