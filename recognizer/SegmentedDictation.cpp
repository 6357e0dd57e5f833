#include "recognizer/SegmentedDictation.h"

#include <algorithm>
#include <cstddef>
#include <random>
#include <utility>
#include <vector>

namespace tavelo::recognition {
namespace {

/// How much background follows the sound of a segment. A model says a word only when it has heard what comes
/// after it, so without this the last word is lost when the key goes up with it, or when a segment is cut.
constexpr double tail = 0.6;

/// Noise of a mean amplitude. Silence would not do: models do not know it from their training.
void appendNoise(std::vector<std::int16_t>& sound, std::size_t count, float amplitude) {
  std::minstd_rand random;  // always the same noise
  std::normal_distribution<float> noise{0, amplitude};
  std::generate_n(std::back_inserter(sound), count, [&] { return static_cast<std::int16_t>(noise(random)); });
}

}  // namespace

SegmentedDictation::SegmentedDictation(std::uint32_t sampleRate, Decode decode, DecodePace& pace,
                                       Listener& listener, Clock clock)
    : sampleRate_(sampleRate),
      decode_(std::move(decode)),
      pace_(pace),
      listener_(listener),
      clock_(std::move(clock)),
      segmenter_(sampleRate) {}

std::string SegmentedDictation::accept(std::span<const std::int16_t> samples, bool moreWaits) {
  segmenter_.append(samples);
  while (const auto end = segmenter_.findEnd(pace_.longestSegment()))
    if (auto failure = close(*end); !failure.empty()) return failure;
  const std::size_t length = segmenter_.samples().size();
  if (moreWaits || lengthOf(length - told_) < pace_.step()) return {};
  // Without a tail: it would make the model guess at half a word.
  const auto decoded = decode(segmenter_.samples());
  if (!decoded.failure.empty()) return decoded.failure;
  told_ = length;
  listener_.heard(decoded.text);
  return {};
}

std::string SegmentedDictation::finish() {
  const std::size_t length = segmenter_.samples().size();
  return length > 0 ? close({length, length}) : std::string{};
}

std::string SegmentedDictation::close(Segmenter::End end) {
  const auto samples = segmenter_.samples().first(end.quietUntil);
  std::vector<std::int16_t> sound{samples.begin(), samples.end()};
  appendNoise(sound, static_cast<std::size_t>(tail * sampleRate_), segmenter_.background());
  const auto decoded = decode(sound);
  if (!decoded.failure.empty()) return decoded.failure;
  start_ += end.at;
  told_ = 0;
  segmenter_.cut(end.at);
  listener_.closed(decoded.text, start_);
  return {};
}

Decoded SegmentedDictation::decode(std::span<const std::int16_t> sound) {
  const Seconds before = clock_();
  auto decoded = decode_(sound);
  pace_.decoded(lengthOf(sound.size()), clock_() - before);
  return decoded;
}

Seconds SegmentedDictation::lengthOf(std::size_t samples) const {
  return Seconds{static_cast<double>(samples) / sampleRate_};
}

}  // namespace tavelo::recognition
