#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "recognizer/DecodePace.h"

namespace tavelo::recognition {

/// Keeps the sound of the current segment and finds where it should end: in a pause, or at the quietest place
/// before it gets too long. One thread.
///
/// A pause is sound that stays near the quietest of the last seconds while the loudest is well above it. So
/// neither the microphone's level nor steady noise matters.
class Segmenter final {
 public:
  explicit Segmenter(std::uint32_t sampleRate);

  void append(std::span<const std::int16_t> samples);

  /// The sound of the current segment.
  std::span<const std::int16_t> samples() const { return samples_; }

  /// The level of the sound between the words, as the mean amplitude of a sample.
  float background() const;

  /// Where a segment ends, as counts of its samples.
  struct End {
    std::size_t at;
    /// Up to here there is nothing but the pause in which it ends.
    std::size_t quietUntil;
  };

  /// Where the current segment should end; absent when it goes on. Ask again after `cut`.
  std::optional<End> findEnd(Seconds longest);

  /// Ends the segment after `count` samples. The rest begins the next one.
  void cut(std::size_t count);

 private:
  struct Range {
    float quietest;
    float loudest;
  };

  void measure();
  Range recent(std::size_t frame) const;
  std::size_t quietestPlace(std::size_t from, std::size_t to) const;

  const std::size_t frameSize_;
  std::vector<std::int16_t> samples_;

  /// Of all whole frames of the segment: the power, and the smoothed level in decibels.
  std::vector<double> powers_;
  std::vector<float> levels_;

  /// What `findEnd` has seen of the segment.
  std::size_t scanned_ = 0;
  std::size_t spokenFrames_ = 0;
  std::size_t quietFrames_ = 0;
};

}  // namespace tavelo::recognition
