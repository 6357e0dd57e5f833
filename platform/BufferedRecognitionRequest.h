#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>

#include "platform/Speech.h"
#include "platform/Time.h"

namespace tavelo::platform {

/// A recognition request for our own engines. It keeps appended sound, in order, until the engine takes it.
///
/// At most `bound` of sound waits; more is dropped on arrival, so that a missing engine cannot use up the
/// memory. Any thread.
class BufferedRecognitionRequest final : public SpeechAudioBufferRecognitionRequest {
 public:
  static constexpr Seconds bound{60};

  void setShouldReportPartialResults(bool wanted) override;
  void append(const AudioBuffer& buffer) override;
  void endAudio() override;

  bool shouldReportPartialResults() const;

  /// Whether the sound has ended.
  bool hasEnded() const;

  /// Waits until at most `most` of sound waits, or `limit` has passed; returns whether there is room. For a
  /// thread that can make sound faster than it is recognised.
  bool waitForRoom(Seconds most, std::chrono::milliseconds limit) const;

  /// Calls `arrived` after each append and at the end of the sound, on the appending thread and outside any
  /// lock; also at once if something is waiting already. `arrived` must return quickly. An empty function
  /// stops the calls.
  void onArrival(std::function<void()> arrived);

  /// Calls `ended` inside `endAudio`, on its thread, after the engine was told. It may wait for the engine's
  /// last words. Set it on the thread that ends the sound, or before that thread can.
  void onEnd(std::function<void()> ended);

  /// The result of `take`.
  struct Taken {
    /// The oldest waiting buffer, mixed down to one channel; absent when none is waiting. Sound appended with
    /// no channels stays as it is.
    std::optional<AudioBuffer> buffer;
    /// Whether the sound has ended and all of it was taken.
    bool ended = false;
  };

  /// Removes and returns the oldest waiting buffer. Never blocks.
  Taken take();

 private:
  void notify();

  mutable std::mutex mutex_;
  mutable std::condition_variable taken_;
  std::deque<AudioBuffer> waiting_;
  Seconds waitingDuration_{0};
  bool ended_ = false;
  bool partialResults_ = false;
  std::function<void()> arrived_;
  std::function<void()> whenEnded_;
};

}  // namespace tavelo::platform
