#include "recognizer/DecodePace.h"

#include <algorithm>

namespace tavelo::recognition {
namespace {

constexpr Seconds shortestStep{0.3};
constexpr Seconds longestDecode{0.15};
constexpr Seconds shortestLimit{3};
constexpr Seconds longestLimit{15};

/// A single slow decode is the machine doing something else.
constexpr int slowInARow = 2;
constexpr double shortening = 0.8;
constexpr double lengthening = 1.25;
/// A decode says something about longer segments only if it was itself of nearly that length.
constexpr double nearlyLongest = 0.75;

}  // namespace

Seconds DecodePace::step() const { return std::max(shortestStep, 2 * last_); }

void DecodePace::decoded(Seconds sound, Seconds took) {
  last_ = took;
  if (took > longestDecode) {
    if (++slowOnes_ < slowInARow) return;
    longest_ = std::max(shortestLimit, shortening * std::min(longest_, sound));
    return;
  }
  slowOnes_ = 0;
  // Twice the length costs more than twice the time.
  if (sound >= nearlyLongest * longest_ && took < longestDecode / 2)
    longest_ = std::min(longestLimit, lengthening * longest_);
}

}  // namespace tavelo::recognition
