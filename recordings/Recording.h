#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/Time.h"

namespace tavelo::recordings {

/// A sound file that is read piece by piece: WAV of any rate, number of channels and kind of sample.
///
/// It gives one channel, the mean of those in the file, at 16 kHz. Memory does not grow with the file. What a
/// file that is cut short still has is read. One thread at a time.
class Recording final {
 public:
  static constexpr std::uint32_t sampleRate = 16000;

  struct Opening;

  /// Opens a file. On a Mac no file can be opened.
  static Opening open(const std::filesystem::path& file);

  ~Recording();
  Recording(const Recording&) = delete;
  Recording& operator=(const Recording&) = delete;

  /// How long the recording is, as its header tells it.
  platform::Seconds duration() const;

  /// The next samples, at most about half a second; none at the end or after a failure.
  std::vector<std::int16_t> read();

  /// All that has not been read.
  std::vector<std::int16_t> readAll() {
    std::vector<std::int16_t> all;
    for (auto samples = read(); !samples.empty(); samples = read())
      all.insert(all.end(), samples.begin(), samples.end());
    return all;
  }

  /// Why reading ended before the end: one clause without a full stop. Empty if it did not.
  const std::string& failure() const;

 private:
  struct Reader;

  explicit Recording(std::unique_ptr<Reader> reader);

  std::unique_ptr<Reader> reader_;
};

/// The result of `Recording::open`.
struct Recording::Opening {
  /// Null if the file is no recording that we can read.
  std::unique_ptr<Recording> recording;
  /// Why not: one clause without a full stop.
  std::string failure;
};

}  // namespace tavelo::recordings
