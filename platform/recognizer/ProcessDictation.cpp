#include "platform/recognizer/ProcessDictation.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tavelo::recognizer {
namespace {

/// More than this waits with us: the process reads at once unless it hangs.
constexpr std::size_t outboxBound = std::size_t{64} * 1024;
constexpr std::size_t largestPiece = 8000;
/// Segments end after 15 s at most, but the process may have two minutes of sound waiting.
constexpr std::size_t keptSeconds = 150;
/// An hour of speech has some 50 kB.
constexpr std::size_t longestTranscript = std::size_t{1024} * 1024;
constexpr const char* badSound = "Bộ nhận diện giọng nói không nhận loại âm thanh này.";
/// The process gets no more than this ahead of what it decodes: it stops reading while 4 MiB wait, and then
/// it could not be told from one that hangs, and would not see a cancel. Less than what is kept.
constexpr std::uint64_t mostSecondsAhead = 90;
constexpr std::uint64_t mostSamplesAhead = 3UL * 1024 * 1024 / sizeof(std::int16_t);
constexpr std::uint32_t usualRate = 16000;
constexpr double lowestRate = 1000;
constexpr double highestRate = 200'000;
/// Sound that ends every process must not be played for ever.
constexpr int mostRestarts = 3;

}  // namespace

void ProcessDictation::feed(RecognizerProcess& process, std::uint32_t number) {
  while (!endSent_ && !finished_ && !isHeldBack() && process.unsent() < outboxBound) {
    if (sent_ < kept_.size()) {
      begin(process, number);
      const auto piece = std::min(kept_.size() - sent_, largestPiece);
      process.sound({kept_.data() + sent_, piece});
      sent_ += piece;
      continue;
    }
    const auto taken = request_->take();
    if (taken.buffer) {
      if (!add(*taken.buffer)) return fail(badSound);
      continue;
    }
    if (!taken.ended) return;
    begin(process, number);
    process.endSound();
    endSent_ = true;
  }
}

bool ProcessDictation::isHeldBack() const {
  if (endSent_ || finished_) return false;
  const std::uint64_t rate = sampleRate_.value_or(usualRate);
  return forgotten_ + sent_ - taken_ >= std::min(mostSecondsAhead * rate, mostSamplesAhead);
}

void ProcessDictation::fail(const char* reason) {
  if (finished_) return;
  finished_ = true;
  task_->fail(reason);
}

void ProcessDictation::begin(RecognizerProcess& process, std::uint32_t number) {
  if (hasBegun()) return;
  number_ = number;
  process.begin(number, sampleRate_.value_or(usualRate));
}

bool ProcessDictation::add(const platform::AudioBuffer& buffer) {
  const double rate = buffer.format.sampleRate;
  if (buffer.format.channelCount != 1 || !std::isfinite(rate) || rate < lowestRate || rate > highestRate)
    return false;
  const auto whole = static_cast<std::uint32_t>(std::lround(rate));
  if (sampleRate_.value_or(whole) != whole) return false;
  sampleRate_ = whole;
  kept_.insert(kept_.end(), buffer.samples.begin(), buffer.samples.end());
  // Only what the process has can be forgotten.
  if (kept_.size() > keptSeconds * whole) {
    forgetUntil(forgotten_ + sent_);
    incomplete_ = true;
  }
  return true;
}

void ProcessDictation::forgetUntil(std::uint64_t sample) {
  const auto count = static_cast<std::size_t>(sample - forgotten_);
  kept_.erase(kept_.begin(), kept_.begin() + static_cast<std::ptrdiff_t>(count));
  sent_ -= count;
  forgotten_ = sample;
}

bool ProcessDictation::hear(const ProcessReply& reply) {
  if (reply.dictation != number_ || !hasBegun() || finished_) return true;
  switch (reply.kind) {
    case ProcessReply::Kind::text:
      transcript_.setPartial(reply.text);
      break;
    case ProcessReply::Kind::closed:
      if (reply.until > forgotten_ + sent_) return false;
      transcript_.endUtterance(reply.text);
      if (reply.until >= forgotten_) incomplete_ = false;
      forgetUntil(std::max(reply.until, forgotten_));
      restarts_ = 0;
      break;
    case ProcessReply::Kind::taken:
      if (reply.until > forgotten_ + sent_) return false;
      taken_ = std::max(taken_, reply.until);
      return true;
    case ProcessReply::Kind::final:
      if (!endSent_) return false;
      finished_ = true;
      task_->reportFinal(transcript_.finalText());
      return true;
    case ProcessReply::Kind::failed:
      return false;
    default:
      return true;
  }
  const auto text = transcript_.text();
  if (text.size() > longestTranscript) return false;
  task_->reportPartial(text);
  return true;
}

bool ProcessDictation::restart() {
  if (hasBegun() && ++restarts_ > mostRestarts) return false;
  // The next process cannot hear all of the segment, so what was heard of it counts.
  if (std::exchange(incomplete_, false)) transcript_.endUtterance(transcript_.takePartial());
  transcript_.restart();
  sent_ = 0;
  forgotten_ = 0;
  taken_ = 0;
  number_ = 0;
  endSent_ = false;
  return true;
}

}  // namespace tavelo::recognizer
