#pragma once

#include <filesystem>
#include <vector>

#include <gtest/gtest.h>
#include <sndfile.h>

namespace tavelo {

/// Writes a sound file with the same sound in every channel.
inline void writeSound(const std::filesystem::path& file, int kind, int rate, int channels,
                       const std::vector<float>& sound) {
  SF_INFO format{};
  format.samplerate = rate;
  format.channels = channels;
  format.format = kind;
  SNDFILE* opened = sf_open(file.c_str(), SFM_WRITE, &format);
  ASSERT_NE(opened, nullptr) << sf_strerror(nullptr);
  std::vector<float> values;
  for (const float sample : sound) values.insert(values.end(), static_cast<std::size_t>(channels), sample);
  EXPECT_EQ(sf_write_float(opened, values.data(), static_cast<sf_count_t>(values.size())),
            static_cast<sf_count_t>(values.size()));
  sf_close(opened);
}

}  // namespace tavelo
