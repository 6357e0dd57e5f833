#pragma once

#include <cstdint>
#include <vector>

namespace tavelo::platform {

/// How captured sound is laid out: signed 16-bit samples, channels interleaved.
struct AudioFormat {
  /// Frames a second; 0 when there is no input.
  double sampleRate = 0;
  std::uint32_t channelCount = 0;

  bool operator==(const AudioFormat&) const = default;
};

/// A piece of captured sound; a plain value that may cross threads.
struct AudioBuffer {
  AudioFormat format;
  std::vector<std::int16_t> samples;
};

}  // namespace tavelo::platform
