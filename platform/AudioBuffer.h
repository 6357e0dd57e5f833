#pragma once

#include <cstdint>
#include <vector>

namespace tavelo::platform {

/// The format of captured sound. Samples are signed 16-bit, with the channels interleaved.
struct AudioFormat {
  /// Frames per second; 0 if there is no input device.
  double sampleRate = 0;
  std::uint32_t channelCount = 0;

  bool operator==(const AudioFormat&) const = default;
};

/// A piece of captured sound. A plain value; may be passed between threads.
struct AudioBuffer {
  AudioFormat format;
  std::vector<std::int16_t> samples;
};

}  // namespace tavelo::platform
