#include <algorithm>
#include <cmath>
#include <random>

#include <gmock/gmock.h>

#include "recognizer/DecodePace.h"
#include "recognizer/SegmentedDictation.h"
#include "recognizer/Segmenter.h"

namespace tavelo::recognition {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::Ge;
using testing::IsEmpty;
using testing::Le;
using testing::SizeIs;

constexpr std::uint32_t rate = 16000;
using Sound = std::vector<std::int16_t>;

/// Sound of a speech-like loudness ("a", syllables of 200 ms) and of pauses ("_"), 100 ms a letter, over
/// noise.
Sound say(const std::string& pattern, double loudness = 3000, double noise = 40) {
  Sound sound;
  std::minstd_rand random;
  std::normal_distribution<double> background{0, noise};
  for (std::size_t i = 0; i < pattern.size() * rate / 10; ++i) {
    const double time = static_cast<double>(i) / rate;
    const double syllable = std::abs(std::sin(time * 3.14159265 / 0.2));
    const double tone = pattern[i / (rate / 10)] == 'a' ? loudness * syllable * std::sin(time * 1200) : 0;
    sound.push_back(static_cast<std::int16_t>(std::clamp(tone + background(random), -32768.0, 32767.0)));
  }
  return sound;
}

std::string times(int count, const std::string& pattern) {
  std::string all;
  for (int i = 0; i < count; ++i) all += pattern;
  return all;
}

/// Where segments end, in seconds, when the sound arrives in pieces of so many samples.
std::vector<double> ends(const Sound& sound, std::size_t piece, Seconds longest = Seconds{15}) {
  Segmenter segmenter{rate};
  std::vector<double> found;
  std::size_t start = 0;
  for (std::size_t at = 0; at < sound.size(); at += piece) {
    segmenter.append(std::span{sound}.subspan(at, std::min(piece, sound.size() - at)));
    while (const auto end = segmenter.findEnd(longest)) {
      segmenter.cut(end->at);
      found.push_back(static_cast<double>(start += end->at) / rate);
    }
  }
  return found;
}

auto between(double from, double to) { return AllOf(Ge(from), Le(to)); }

TEST(Segmenter, EndsASegmentInAPauseAtAnyLevelOfSpeechAndNoise) {
  const std::string pattern = "___" + times(15, "a") + "________" + times(15, "a") + "___";
  struct Level {
    double loudness;
    double noise;
  };
  for (const auto [loudness, noise] :
       {Level{3000, 0}, Level{3000, 40}, Level{300, 10}, Level{20000, 40}, Level{3000, 400}})
    for (const std::size_t piece : {320U, 1000U, 160'000U})
      EXPECT_THAT(ends(say(pattern, loudness, noise), piece), ElementsAre(between(1.85, 2.5)))
          << loudness << " over " << noise << " in pieces of " << piece;
}

TEST(Segmenter, GoesOnInShortGapsAndWithoutSpeech) {
  EXPECT_THAT(ends(say("___" + times(12, "aaaaaa___")), 320), IsEmpty());
  EXPECT_THAT(ends(say(times(140, "_")), 320), IsEmpty());
}

TEST(Segmenter, CutsALongSegmentAtItsQuietestPlace) {
  // 15 s without a pause; only at 12 s there is a short gap.
  EXPECT_THAT(ends(say(times(120, "a") + "__" + times(60, "a")), 320), ElementsAre(between(11.9, 12.3)));
  // A limit that shrinks below what is there already counts at once.
  EXPECT_THAT(ends(say(times(70, "a")), 160'000, Seconds{3}), SizeIs(AllOf(Ge(2U), Le(3U))));
}

TEST(DecodePace, StretchesTheStepAndShortensSegmentsOfASlowMachine) {
  DecodePace pace;
  pace.decoded(Seconds{10}, Seconds{0.1});
  EXPECT_EQ(pace.step(), Seconds{0.3});
  pace.decoded(Seconds{10}, Seconds{0.4});
  EXPECT_EQ(pace.step(), Seconds{0.8});
  EXPECT_EQ(pace.longestSegment(), Seconds{15}) << "one slow decode is no slow machine";
  pace.decoded(Seconds{10}, Seconds{0.1});
  pace.decoded(Seconds{10}, Seconds{0.4});
  EXPECT_EQ(pace.longestSegment(), Seconds{15});
  pace.decoded(Seconds{10}, Seconds{0.4});
  EXPECT_EQ(pace.longestSegment(), Seconds{8});
  for (int i = 0; i < 10; ++i) pace.decoded(Seconds{1}, Seconds{1});
  EXPECT_EQ(pace.longestSegment(), Seconds{3});
  for (int i = 0; i < 10; ++i) pace.decoded(Seconds{1}, Seconds{0.01});
  EXPECT_EQ(pace.longestSegment(), Seconds{3}) << "short ones say nothing about long ones";
  for (int i = 0; i < 20; ++i) pace.decoded(pace.longestSegment(), Seconds{0.05});
  EXPECT_EQ(pace.longestSegment(), Seconds{15});
}

/// A dictation whose texts are the lengths of what was decoded, in tenths of a second; decoding takes `cost`.
struct DictationTest : testing::Test, Listener {
  void heard(std::string_view text) override { texts.emplace_back(text); }
  void closed(std::string_view text, std::uint64_t until) override {
    texts.push_back("closed " + std::string{text});
    ends.push_back(until);
  }

  std::vector<std::string> texts;
  std::vector<std::uint64_t> ends;
  Seconds now{0};
  Seconds cost{0};
  std::string failure;
  DecodePace pace;
  SegmentedDictation dictation{rate,
                               [this](std::span<const std::int16_t> samples) {
                                 now += cost;
                                 return Decoded{std::to_string(samples.size() * 10 / rate), failure};
                               },
                               pace, *this, [this] { return now; }};

  void hear(const std::string& pattern, std::size_t piece = 320) {
    const auto sound = say(pattern);
    for (std::size_t at = 0; at < sound.size(); at += piece)
      EXPECT_EQ(dictation.accept(std::span{sound}.subspan(at, std::min(piece, sound.size() - at)), false),
                failure);
  }
};

TEST_F(DictationTest, DecodesEvery300MillisecondsAndClosesWithATailOfNoise) {
  hear("aaaaaaa");
  EXPECT_THAT(texts, ElementsAre("3", "6"));
  EXPECT_EQ(dictation.finish(), "");
  EXPECT_EQ(texts.back(), "closed 13");
  EXPECT_THAT(ends, ElementsAre(7 * rate / 10));
}

TEST_F(DictationTest, StretchesTheStepWhenDecodingIsSlow) {
  cost = Seconds{0.25};
  hear("aaaaaaaaaaaaaaa");
  EXPECT_THAT(texts, ElementsAre("3", "8", "13"));
}

TEST_F(DictationTest, LeavesNoSampleOut) {
  const std::string pattern = "___" + times(4, times(20, "a") + times(8, "_")) + times(200, "a");
  hear(pattern, 700);
  EXPECT_EQ(dictation.finish(), "");
  EXPECT_THAT(ends, SizeIs(6));
  EXPECT_TRUE(std::is_sorted(ends.begin(), ends.end()));
  EXPECT_EQ(ends.back(), say(pattern).size());
}

TEST_F(DictationTest, SaysNothingOfWhatIsBehindAndFailsWithTheEngine) {
  const auto sound = say("aaaaaaaaaa");
  EXPECT_EQ(dictation.accept(sound, true), "");
  EXPECT_THAT(texts, IsEmpty());
  failure = "broke";
  EXPECT_EQ(dictation.accept(sound, false), "broke");
  EXPECT_EQ(dictation.finish(), "broke");
}

}  // namespace
}  // namespace tavelo::recognition
