#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <vector>

#include "recognizer/FrameParser.h"
#include "recognizer/Outbox.h"

namespace tavelo::recognition {

/// What the reading thread has for the decoding one: the current dictation and its sound that waits. Any
/// thread.
class Inbox final : public FrameHandler {
 public:
  /// What is to be done next.
  struct Work {
    /// Counts the dictations of this process; 0 when there is none now. The client's numbers may repeat.
    std::uint64_t serial = 0;
    std::uint32_t dictation = 0;
    std::uint32_t sampleRate = 0;
    /// At most a second of sound, so that a dictation which is given up does not keep the decoder busy.
    std::vector<std::int16_t> samples;
    /// Whether more of it waits already, or its end.
    bool moreWaits = false;
    /// Whether the sound is over with these samples.
    bool ended = false;
  };

  /// Has `outbox` drop the lines of dictations that are given up.
  explicit Inbox(Outbox& outbox) : outbox_(outbox) {}

  void begin(std::uint32_t dictation, std::uint32_t sampleRate) override;
  void sound(std::vector<std::int16_t> samples) override;
  void end() override;
  void cancel() override;

  /// Waits for work. Returns the next dictation, sound, or end; or that the dictation has been given up.
  Work take();

  /// Whether so much sound waits that no more should be read.
  bool isFull() const;

 private:
  void start(std::uint64_t serial);

  Outbox& outbox_;
  mutable std::mutex mutex_;
  std::condition_variable arrived_;
  std::uint64_t count_ = 0;
  /// The current dictation; its samples are those that nobody has taken.
  Work current_;
  std::size_t taken_ = 0;
  /// Whether the current dictation's end has come. What comes after it is skipped.
  bool over_ = false;
  /// The dictation that `take` told of last.
  std::uint64_t announced_ = 0;
};

}  // namespace tavelo::recognition
