#include <iterator>
#include <sstream>

#include <gtest/gtest.h>

#include "platform/recognizer/ProcessSpeech.h"
#include "recordings/Transcriber.h"
#include "tests/platform/recognizer/PumpedMainQueue.h"
#include "tests/platform/recognizer/TemporaryFolder.h"
#include "tests/recordings/SoundFile.h"

namespace tavelo::recordings {
namespace {

/// Transcription by the scripted process; see ScriptedRecognizer.cpp.
class TranscriberTest : public testing::Test {
 protected:
  /// A recording of so many minutes, with a word and the end of a segment in each.
  Transcription transcribe(int minutes) {
    constexpr std::size_t minute = std::size_t{60} * Recording::sampleRate;
    std::vector<float> sound(static_cast<std::size_t>(minutes) * minute);
    for (std::size_t i = 0; i < static_cast<std::size_t>(minutes); ++i) {
      sound[i * minute + 9] = static_cast<float>(i + 1) / 32768;
      sound[i * minute + minute - 1] = -1.0F / 32768;
    }
    writeSound(folder_.path() / "a.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 16000, 1, sound);
    const auto recording = Recording::open(folder_.path() / "a.wav").recording;
    Transcriber transcriber{speech_.makeRecognizer("vi_VN"), queue_,
                            [this](const auto& condition) { EXPECT_TRUE(queue_.pumpUntil(condition)); }};
    return transcriber.transcribe(*recording, [this](platform::Seconds given) {
      EXPECT_GE(given, given_);
      given_ = given;
    });
  }

  std::size_t starts() const {
    std::istringstream lines{folder_.read("starts")};
    return static_cast<std::size_t>(std::distance(std::istream_iterator<std::string>{lines}, {}));
  }

  TemporaryFolder folder_;
  PumpedMainQueue queue_;
  platform::Seconds given_{0};
  recognizer::ProcessSpeech speech_{
      queue_, TAVELO_SCRIPTED_RECOGNIZER,
      recognizer::ModelConfiguration{
          std::nullopt,
          [this](const std::string& name) { return name == "TAVELO_MODEL" ? folder_.path().string() : ""; }},
      recognizer::RecognizerLog{folder_.path() / "recognizer.log"}};
};

TEST_F(TranscriberTest, TenMinutesReachASlowProcessWholeAndNoFasterThanItTakesThem) {
  const auto transcription = transcribe(10);
  EXPECT_EQ(transcription.raw, "1 2 3 4 5 6 7 8 9 10");
  EXPECT_EQ(transcription.failure, "");
  EXPECT_EQ(transcription.sound, platform::Seconds{600});
  EXPECT_EQ(given_, platform::Seconds{600});
  EXPECT_EQ(starts(), 1U) << "it was sent too much, or taken for one that hangs";
}

TEST_F(TranscriberTest, AnEngineThatFailsInTheMiddleEndsItAndTheNextOneWorks) {
  folder_.write("fault", "2 exit 99");
  EXPECT_NE(transcribe(4).failure, "");
  folder_.write("fault", "2 exit 1");
  given_ = {};
  EXPECT_EQ(transcribe(3).raw, "1 2 3");
}

}  // namespace
}  // namespace tavelo::recordings
