#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/Environment.h"
#include "platform/recognizer/VoskSpeech.h"
#include "tests/platform/recognizer/PumpedMainQueue.h"
#include "tests/platform/recognizer/ReferenceDecoding.h"
#include "tests/platform/recognizer/ReportedDictation.h"

namespace tavelo::recognizer {
namespace {

/// What must be reported of these transcripts: those that differ from the one before, then the final one.
std::vector<std::string> reportsFor(std::vector<std::string> transcripts) {
  const std::string last = "[" + transcripts.back() + "]";
  transcripts.pop_back();
  transcripts.insert(transcripts.begin(), "");
  transcripts.erase(std::unique(transcripts.begin(), transcripts.end()), transcripts.end());
  transcripts.erase(transcripts.begin());
  transcripts.push_back(last);
  return transcripts;
}

/// Three bursts of noise, used when there is no clip.
WavSound noise() {
  WavSound sound{16000, std::vector<std::int16_t>(48000)};
  std::minstd_rand random{1};
  for (std::size_t i = 0; i < sound.samples.size(); ++i)
    if (i / 8000 % 2 == 1) sound.samples[i] = static_cast<std::int16_t>(random() % 16000);
  return sound;
}

/// Uses a real library and model, and the clip that `TAVELO_VOSK_CLIP` names.
TEST(RealVosk, TheEngineReportsExactlyWhatTheLibraryRecognises) {
  const auto library = platform::environmentVariable("TAVELO_VOSK_LIBRARY");
  const auto model = platform::environmentVariable("TAVELO_VOSK_MODEL");
  const auto clip = platform::environmentVariable("TAVELO_VOSK_CLIP");
  if (library.empty() || model.empty())
    GTEST_SKIP() << "TAVELO_VOSK_LIBRARY and TAVELO_VOSK_MODEL are not set";

  const auto sound = clip.empty() ? noise() : readWav(clip);
  const auto chunks = chunksOf(sound, 1024, 1.0);
  const auto expected = reportsFor(referenceTranscripts(library, model, sound.sampleRate, chunks));
  EXPECT_TRUE(clip.empty() || expected.back() != "[]");

  PumpedMainQueue mainQueue;
  VoskSpeech speech{mainQueue, VoskConfiguration{std::nullopt}};
  const auto recognizer = speech.makeRecognizer("vi_VN");
  ASSERT_TRUE(recognizer && recognizer->isAvailable()) << speech.failure("vi_VN", {});
  for (int i = 0; i < 2; ++i) {
    const ReportedDictation dictation{speech};
    for (const auto& chunk : chunks) dictation.request->append({{sound.sampleRate, 1}, chunk});
    EXPECT_EQ(dictation.finish(mainQueue), expected);
  }
}

}  // namespace
}  // namespace tavelo::recognizer
