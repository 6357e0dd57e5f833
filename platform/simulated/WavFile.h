#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavelo::simulated {

/// The result of reading a WAV file: the samples, or an error.
struct WavFile {
  /// Signed 16-bit, one channel, 16000 per second.
  std::vector<std::int16_t> samples;
  /// One clause without a full stop, such as "not a WAV file"; absent on success.
  std::optional<std::string> error;

  /// Reads RIFF/WAVE with 16-bit PCM, one channel, 16 kHz; skips unknown chunks. Any thread.
  static WavFile parse(std::string_view bytes);
};

}  // namespace tavelo::simulated
