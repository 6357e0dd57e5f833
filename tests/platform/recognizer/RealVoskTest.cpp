#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/recognizer/VoskSpeech.h"
#include "tests/platform/recognizer/PumpedMainQueue.h"
#include "tests/platform/recognizer/ReferenceDecoding.h"

namespace tavelo::recognizer {
namespace {

/// Each transcript that differs from the one before, the first from nothing.
std::vector<std::string> changesOf(const std::vector<std::string>& transcripts) {
  std::vector<std::string> changes;
  for (const auto& transcript : transcripts)
    if (transcript != (changes.empty() ? std::string{} : changes.back())) changes.push_back(transcript);
  return changes;
}

/// Three bursts of noise, for want of speech.
WavSound noise() {
  WavSound sound{16000, std::vector<std::int16_t>(48000)};
  std::minstd_rand random{1};
  for (std::size_t i = 0; i < sound.samples.size(); ++i)
    if (i / 8000 % 2 == 1) sound.samples[i] = static_cast<std::int16_t>(random() % 16000);
  return sound;
}

/// With a real library and model, on the sound that `TAVELO_VOSK_CLIP` names.
TEST(RealVosk, TheEngineSaysExactlyWhatTheLibrarySays) {
  const char* library = std::getenv("TAVELO_VOSK_LIBRARY");
  const char* model = std::getenv("TAVELO_VOSK_MODEL");
  const char* clip = std::getenv("TAVELO_VOSK_CLIP");
  if (library == nullptr || model == nullptr)
    GTEST_SKIP() << "TAVELO_VOSK_LIBRARY and TAVELO_VOSK_MODEL are not set";

  const auto sound = clip != nullptr ? readWav(clip) : noise();
  const auto chunks = chunksOf(sound, 1024, 1.0);
  auto expected = referenceTranscripts(library, model, sound.sampleRate, chunks);
  const std::string expectedFinal = expected.back();
  expected.pop_back();
  EXPECT_TRUE(clip == nullptr || !expectedFinal.empty());

  PumpedMainQueue mainQueue;
  VoskSpeech speech{mainQueue, VoskConfiguration{std::nullopt}};
  const auto recognizer = speech.makeRecognizer("vi_VN");
  ASSERT_TRUE(recognizer && recognizer->isAvailable()) << speech.failure("vi_VN");
  for (int dictation = 0; dictation < 2; ++dictation) {
    const auto request = speech.makeAudioBufferRecognitionRequest();
    request->setShouldReportPartialResults(true);
    std::vector<std::string> partials;
    std::string last;
    bool over = false;
    const auto task = recognizer->recognitionTask(request, [&](const auto& result, const auto& error) {
      EXPECT_FALSE(error);
      over = error || result->isFinal;
      if (over && result) last = result->formattedString;
      if (!over) partials.push_back(result->formattedString);
    });
    for (const auto& chunk : chunks) request->append({{sound.sampleRate, 1}, chunk});
    request->endAudio();
    ASSERT_TRUE(mainQueue.pumpUntil([&] { return over; }));
    EXPECT_EQ(partials, changesOf(expected));
    EXPECT_EQ(last, expectedFinal);
  }
}

}  // namespace
}  // namespace tavelo::recognizer
