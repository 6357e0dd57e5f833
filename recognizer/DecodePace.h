#pragma once

#include <chrono>

namespace tavelo::recognition {

using Seconds = std::chrono::duration<double>;

/// How often and how much a machine can decode, learnt from the decodes before. Decoding thread.
class DecodePace final {
 public:
  /// How much new sound the next decode of a growing segment waits for: 300 ms, or so much more that decoding
  /// takes at most half the time.
  Seconds step() const;

  /// How long a segment may get, so that one decode of it takes less than 150 ms: 3 to 15 s.
  Seconds longestSegment() const { return longest_; }

  /// A decode of so much sound took so long.
  void decoded(Seconds sound, Seconds took);

 private:
  Seconds last_{0};
  Seconds longest_{15};
  int slowOnes_ = 0;
};

}  // namespace tavelo::recognition
