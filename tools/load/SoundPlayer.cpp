#include "tools/load/SoundPlayer.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>

namespace tavelo::load {
namespace {

constexpr platform::AudioFormat format{.sampleRate = 16000, .channelCount = 1};
constexpr std::chrono::milliseconds bufferLength{20};
constexpr std::size_t bufferSamples = 320;

platform::Uptime uptime() { return std::chrono::steady_clock::now().time_since_epoch(); }

}  // namespace

SoundPlayer::SoundPlayer(std::vector<std::int16_t> samples)
    : samples_(std::move(samples)), thread_([this] { run(); }) {}

SoundPlayer::~SoundPlayer() {
  {
    const std::lock_guard lock{mutex_};
    stopping_ = true;
  }
  changed_.notify_one();
  thread_.join();
}

platform::Seconds SoundPlayer::duration() const {
  return platform::Seconds{static_cast<double>(samples_.size()) / format.sampleRate};
}

void SoundPlayer::play(std::shared_ptr<Request> request, Ended ended) {
  {
    const std::lock_guard lock{mutex_};
    begun_.push_back({std::move(request), std::move(ended), uptime()});
  }
  changed_.notify_one();
}

void SoundPlayer::run() {
  std::vector<Playing> playing;
  while (true) {
    {
      std::unique_lock lock{mutex_};
      const auto wake = [this] { return stopping_ || !begun_.empty(); };
      if (playing.empty()) {
        changed_.wait(lock, wake);
      } else {
        changed_.wait_for(lock, bufferLength, wake);
      }
      if (stopping_) return;
      std::move(begun_.begin(), begun_.end(), std::back_inserter(playing));
      begun_.clear();
    }
    const auto now = uptime();
    std::erase_if(playing, [&](Playing& one) { return !advance(one, now); });
  }
}

/// Appends what falls due by `now`. Returns false once the sound has ended.
bool SoundPlayer::advance(Playing& playing, platform::Uptime now) const {
  const auto due = static_cast<std::size_t>((now - playing.begun) / bufferLength) * bufferSamples;
  while (playing.played < std::min(due, samples_.size())) {
    const auto begin = samples_.begin() + static_cast<std::ptrdiff_t>(playing.played);
    const auto count = std::min(bufferSamples, samples_.size() - playing.played);
    playing.request->append({format, {begin, begin + static_cast<std::ptrdiff_t>(count)}});
    playing.played += count;
  }
  if (playing.played < samples_.size()) return true;
  playing.ended(now);
  playing.request->endAudio();
  return false;
}

}  // namespace tavelo::load
