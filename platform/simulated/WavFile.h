#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavelo::simulated {

/// What reading a WAV file gave: the samples, or why not.
struct WavFile {
  static constexpr double sampleRate = 16000;

  /// Signed 16-bit, one channel, `sampleRate` frames a second.
  std::vector<std::int16_t> samples;
  /// One clause without a full stop, such as "not a WAV file"; absent when it was read.
  std::optional<std::string> error;

  /// Reads RIFF/WAVE with 16-bit PCM, one channel, 16 kHz; chunks it does not know are skipped. Any thread.
  static WavFile parse(std::string_view bytes);

  /// The same from the disk; the error names no file.
  static WavFile read(const std::filesystem::path& file);
};

}  // namespace tavelo::simulated
