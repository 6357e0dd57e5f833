#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tavelo {

/// 16-bit mono sound of a WAV file.
struct WavSound {
  double sampleRate = 0;
  std::vector<std::int16_t> samples;
};

/// Throws `std::runtime_error` when the file cannot be read or is not such a WAV file.
WavSound readWav(const std::string& file);

/// The sound followed by silence, in equal chunks. The last chunk is padded with silence.
std::vector<std::vector<std::int16_t>> chunksOf(const WavSound& sound, std::size_t chunkFrames,
                                                double silenceSeconds);

/// The running transcript after each chunk, and finally after the end of the sound. Calls libvosk directly,
/// without the program's own code. Throws `std::runtime_error` when the library fails.
std::vector<std::string> referenceTranscripts(const std::string& library, const std::string& model,
                                              double sampleRate,
                                              const std::vector<std::vector<std::int16_t>>& chunks);

}  // namespace tavelo
