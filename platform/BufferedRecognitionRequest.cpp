#include "platform/BufferedRecognitionRequest.h"

#include <cstddef>
#include <cstdint>
#include <numeric>
#include <utility>

namespace tavelo::platform {
namespace {

Seconds durationOf(const AudioBuffer& buffer) {
  const double samplesPerSecond = buffer.format.sampleRate * buffer.format.channelCount;
  return Seconds{samplesPerSecond > 0 ? static_cast<double>(buffer.samples.size()) / samplesPerSecond : 0.0};
}

/// Replaces each frame with the mean of its channels, and drops an incomplete frame at the end.
void mixDown(AudioBuffer& buffer) {
  const std::size_t channels = buffer.format.channelCount;
  if (channels < 2) return;
  auto& samples = buffer.samples;
  const std::size_t frames = samples.size() / channels;
  for (std::size_t frame = 0; frame < frames; ++frame) {
    const auto* first = &samples[frame * channels];
    const auto sum = std::accumulate(first, first + channels, std::int64_t{0});
    samples[frame] = static_cast<std::int16_t>(sum / static_cast<std::int64_t>(channels));
  }
  samples.resize(frames);
  buffer.format.channelCount = 1;
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

bool BufferedRecognitionRequest::hasEnded() const {
  const std::lock_guard lock{mutex_};
  return ended_;
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
  std::function<void()> ended;
  {
    const std::lock_guard lock{mutex_};
    if (ended_) return;
    ended_ = true;
    ended = std::move(whenEnded_);
  }
  notify();
  if (ended) ended();
}

void BufferedRecognitionRequest::onEnd(std::function<void()> ended) {
  const std::lock_guard lock{mutex_};
  whenEnded_ = std::move(ended);
}

bool BufferedRecognitionRequest::waitForRoom(Seconds most, std::chrono::milliseconds limit) const {
  std::unique_lock lock{mutex_};
  return taken_.wait_for(lock, limit, [&] { return waitingDuration_ <= most; });
}

void BufferedRecognitionRequest::onArrival(std::function<void()> arrived) {
  bool waiting = false;
  {
    const std::lock_guard lock{mutex_};
    arrived_ = std::move(arrived);
    waiting = ended_ || !waiting_.empty();
  }
  if (waiting) notify();
}

BufferedRecognitionRequest::Taken BufferedRecognitionRequest::take() {
  Taken taken;
  {
    const std::lock_guard lock{mutex_};
    if (waiting_.empty()) return {std::nullopt, ended_};
    taken.buffer = std::move(waiting_.front());
    waiting_.pop_front();
    waitingDuration_ -= durationOf(*taken.buffer);
  }
  taken_.notify_all();
  mixDown(*taken.buffer);
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
