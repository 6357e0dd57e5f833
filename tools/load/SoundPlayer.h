#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/Speech.h"
#include "platform/Time.h"

namespace tavelo::load {

/// Plays one recording into many recognition requests at the speed of speech, in buffers of 20 ms, as so many
/// microphones would. One thread of its own plays to all.
class SoundPlayer final {
 public:
  using Request = platform::SpeechAudioBufferRecognitionRequest;
  /// Called on the player's thread with the time at which the sound ended.
  using Ended = std::function<void(platform::Uptime)>;

  /// `samples` are mono at 16 kHz.
  explicit SoundPlayer(std::vector<std::int16_t> samples);
  /// Falls silent at once; requests that still play are left without an end.
  ~SoundPlayer();
  SoundPlayer(const SoundPlayer&) = delete;
  SoundPlayer& operator=(const SoundPlayer&) = delete;

  /// The recording's length.
  platform::Seconds duration() const;

  /// Begins to play into `request`; at the end it calls `ended`, then ends the request's sound. Any thread.
  void play(std::shared_ptr<Request> request, Ended ended);

 private:
  struct Playing {
    std::shared_ptr<Request> request;
    Ended ended;
    platform::Uptime begun;
    std::size_t played = 0;
  };

  void run();
  bool advance(Playing& playing, platform::Uptime now) const;

  const std::vector<std::int16_t> samples_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<Playing> begun_;
  bool stopping_ = false;
  std::thread thread_;
};

}  // namespace tavelo::load
