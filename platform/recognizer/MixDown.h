#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tavelo::recognizer {

/// Fills `mono` with the mean of each frame's channels, of which there is at least one; an incomplete frame
/// at the end is left out.
inline void mixDown(std::span<const std::int16_t> samples, std::size_t channels,
                    std::vector<std::int16_t>& mono) {
  mono.clear();
  mono.reserve(samples.size() / channels);
  for (; samples.size() >= channels; samples = samples.subspan(channels)) {
    std::int64_t sum = 0;
    for (const std::int16_t sample : samples.first(channels)) sum += sample;
    mono.push_back(static_cast<std::int16_t>(sum / static_cast<std::int64_t>(channels)));
  }
}

}  // namespace tavelo::recognizer
