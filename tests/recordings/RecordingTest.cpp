#include <cmath>
#include <limits>
#include <numbers>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "recordings/Recording.h"
#include "tests/platform/recognizer/TemporaryFolder.h"
#include "tests/recordings/SoundFile.h"

namespace tavelo::recordings {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr int wav = SF_FORMAT_WAV;

/// How loud the sound is at one frequency, and how loud besides, from 0 to 1. The ends do not count.
std::pair<double, double> loudness(const std::vector<std::int16_t>& sound, double frequency) {
  const std::size_t margin = 400;
  double sine = 0, cosine = 0, power = 0;
  for (std::size_t i = margin; i + margin < sound.size(); ++i) {
    const double value = sound[i] / 32768.0;
    const double phase = 2 * std::numbers::pi * frequency * static_cast<double>(i) / Recording::sampleRate;
    sine += value * std::sin(phase), cosine += value * std::cos(phase), power += value * value;
  }
  const double count = static_cast<double>(sound.size() - 2 * margin);
  const double tone = 2 * std::hypot(sine, cosine) / count;
  return {tone, std::sqrt(std::max(0.0, 2 * power / count - tone * tone))};
}

TEST(Recording, IsTheSameToneAt16kHzWhateverItsKind) {
  const struct {
    int kind, rate, channels;
  } kinds[] = {{wav | SF_FORMAT_PCM_U8, 16000, 1},           {wav | SF_FORMAT_PCM_16, 8000, 1},
               {wav | SF_FORMAT_PCM_16, 44100, 2},           {wav | SF_FORMAT_PCM_24, 48000, 7},
               {wav | SF_FORMAT_PCM_32, 96000, 1},           {wav | SF_FORMAT_FLOAT, 192000, 1},
               {wav | SF_FORMAT_DOUBLE, 22050, 2},           {SF_FORMAT_WAVEX | SF_FORMAT_PCM_16, 16000, 7},
               {SF_FORMAT_RF64 | SF_FORMAT_PCM_16, 11025, 1}};
  const TemporaryFolder folder;
  const auto file = folder.path() / "tone.wav";
  for (const auto& [kind, rate, channels] : kinds) {
    SCOPED_TRACE(rate);
    std::vector<float> tone(static_cast<std::size_t>(rate));
    for (std::size_t i = 0; i < tone.size(); ++i)
      tone[i] = 0.5F * std::sin(2 * std::numbers::pi_v<float> * 1000 * static_cast<float>(i) /
                                static_cast<float>(rate));
    writeSound(file, kind, rate, channels, tone);
    const auto opening = Recording::open(file);
    ASSERT_NE(opening.recording, nullptr) << opening.failure;
    EXPECT_DOUBLE_EQ(opening.recording->duration().count(), 1);
    const auto sound = opening.recording->readAll();
    EXPECT_EQ(opening.recording->failure(), "");
    EXPECT_NEAR(static_cast<double>(sound.size()), Recording::sampleRate, 2);
    const auto [heard, besides] = loudness(sound, 1000);
    EXPECT_NEAR(heard, 0.5, 0.01);
    EXPECT_LT(besides, 0.01);
  }
}

TEST(Recording, KeepsTheSamplesOfAMicrophoneAndClipsTheRest) {
  const TemporaryFolder folder;
  const auto file = folder.path() / "a.wav";
  constexpr float unit = 1.0F / 32768;
  writeSound(file, wav | SF_FORMAT_PCM_16, 16000, 1, {1 * unit, -1 * unit, 12345 * unit, -12345 * unit});
  EXPECT_THAT(Recording::open(file).recording->readAll(), ElementsAre(1, -1, 12345, -12345));
  const float infinite = std::numeric_limits<float>::infinity();
  writeSound(file, wav | SF_FORMAT_FLOAT, 16000, 2, {7.5F, -1e30F, std::nanf(""), infinite, 0.5F});
  EXPECT_THAT(Recording::open(file).recording->readAll(), ElementsAre(32767, -32768, 0, 0, 16384));
}

TEST(Recording, WhatIsNoRecordingIsOneClauseAndHostileHeadersAreHarmless) {
  const TemporaryFolder folder;
  const auto file = folder.path() / "a.wav";
  const auto failureOf = [&](const std::string& bytes) {
    folder.write("a.wav", bytes);
    const auto opening = Recording::open(file);
    // Whatever it takes for sound is no more than there is.
    const auto count = opening.recording ? opening.recording->readAll().size() : 0;
    EXPECT_LE(count, 64 * bytes.size());
    return opening.failure;
  };
  EXPECT_EQ(Recording::open(folder.path() / "none").failure, "No such file or directory");
  EXPECT_NE(Recording::open(folder.path()).failure, "");
  for (const char* bytes : {"", "RIFF", "xin chào", "RIFF\xFF\xFF\xFF\xFFWAVE"})
    EXPECT_NE(failureOf(bytes), "");

  writeSound(file, wav | SF_FORMAT_PCM_16, 16000, 1, std::vector<float>(100, 0.25F));
  const std::string good = folder.read("a.wav");
  ASSERT_EQ(good.size(), 244U);
  for (std::size_t length = 0; length <= 44; ++length)
    EXPECT_NE(failureOf(good.substr(0, length)), "") << length;
  EXPECT_EQ(failureOf(good.substr(0, 44)), "there is no sound in it");
  folder.write("a.wav", good.substr(0, 145));
  EXPECT_EQ(Recording::open(file).recording->readAll().size(), 50U) << "what a cut file still has is read";
  // Every byte of the header with its extremes; among them the rate, the channels and all lengths.
  for (std::size_t at = 0; at < 44; ++at) {
    for (const char value : {'\0', '\x01', '\x7F', '\x80', '\xFF'}) {
      auto bytes = good;
      bytes[at] = value;
      failureOf(bytes);
    }
  }
  auto slow = good;
  slow.replace(24, 4, std::string{"\x07\0\0\0", 4});
  EXPECT_THAT(failureOf(slow), HasSubstr("7 Hz"));
}

}  // namespace
}  // namespace tavelo::recordings
