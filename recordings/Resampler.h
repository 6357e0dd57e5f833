#pragma once

#include <memory>
#include <span>
#include <vector>

#include <samplerate.h>

namespace tavelo::recordings {

/// Changes the sample rate of one channel of sound, piece by piece. One thread.
class Resampler final {
 public:
  /// `ratio` is the new rate divided by the old one.
  explicit Resampler(double ratio);

  /// Appends to `out` what `in` becomes, some of it only with the next call. With `last`, all of it.
  void process(std::span<const float> in, bool last, std::vector<float>& out);

 private:
  const double ratio_;
  std::unique_ptr<SRC_STATE, SRC_STATE* (*)(SRC_STATE*)> state_;
};

}  // namespace tavelo::recordings
