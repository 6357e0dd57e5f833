#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>

#include "platform/Speech.h"
#include "platform/Time.h"

namespace tavelo::platform {

/// A recognition request for engines of our own: keeps appended sound, in order, until the engine takes it.
///
/// Sound beyond `bound` that no engine has taken is dropped, newest first, so that an engine that never comes
/// cannot eat the memory. Any thread, unless said otherwise.
class BufferedRecognitionRequest final : public SpeechAudioBufferRecognitionRequest {
 public:
  static constexpr Seconds bound{60};

  void setShouldReportPartialResults(bool wanted) override;
  void append(const AudioBuffer& buffer) override;
  void endAudio() override;

  bool shouldReportPartialResults() const;

  /// `arrived` is called on the appending thread, outside any lock, after each append and at the end of the
  /// sound; and at once, when something waits already. It must return quickly. An empty function ends the
  /// calls.
  void onArrival(std::function<void()> arrived);

  /// What `take` found.
  struct Taken {
    /// The oldest buffer that waited; absent when none did.
    std::optional<AudioBuffer> buffer;
    /// Whether the sound has ended and nothing waits any more.
    bool ended = false;
  };

  /// Takes the oldest waiting buffer out; never blocks.
  Taken take();

 private:
  void notify();

  mutable std::mutex mutex_;
  std::deque<AudioBuffer> waiting_;
  Seconds waitingDuration_{0};
  bool ended_ = false;
  bool partialResults_ = false;
  std::function<void()> arrived_;
};

}  // namespace tavelo::platform
