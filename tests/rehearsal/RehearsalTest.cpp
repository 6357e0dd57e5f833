#include <algorithm>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/BufferedRecognitionRequest.h"
#include "rehearsal/Rehearsal.h"
#include "rehearsal/RehearsalWindows.h"

namespace tavelo::rehearsal {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

Story storyOf(const std::string& desktop, const std::string& steps, const std::string& expectation) {
  auto parsed = parseStory(R"({"title": "t", "desktop": )" + desktop + R"(, "steps": )" + steps +
                           R"(, "expect": )" + expectation + "}");
  if (const auto* error = std::get_if<std::string>(&parsed)) ADD_FAILURE() << *error;
  return std::get<Story>(std::move(parsed));
}

struct Played {
  RehearsalResult result;
  std::vector<std::string> lines;
};

Played played(const Story& story) {
  Played played;
  played.result = rehearse(story, std::nullopt,
                           [&](const TimelineEntry& entry) { played.lines.push_back(entry.line()); });
  return played;
}

const std::string editor = R"({"applications": [{"name": "A", "fields": [{"name": "f"}]}]})";
const std::string terminal =
    R"({"applications": [{"name": "A", "fields": [{"name": "f", "kind": "terminal"}]}],
                                 "pasteboard": [{"public.utf8-plain-text": "cũ"}]})";
const std::string dictation =
    R"([{"at": 1, "press": "fn"}, {"at": 2, "hears": "một"}, {"at": 3, "release": "fn"}])";

TEST(RehearsalTest, TimelineShowsThePasteRoutesFourInstants) {
  const auto [result, lines] = played(storyOf(terminal, dictation, R"({"fields": {"A/f": "Một"}})"));
  EXPECT_THAT(result.failures, IsEmpty());
  EXPECT_THAT(lines, Contains("    3.000    +0.000  pasteboard    string “Một”"));
  EXPECT_THAT(lines, Contains("    3.450    +0.450  keystroke     post Command-V down at hid"));
  EXPECT_THAT(lines, Contains("    3.800    +0.800  accessibility read AXValue of A/f: refused"));
  EXPECT_THAT(lines, Contains("    7.000    +4.000  pasteboard    wrote 1 item with string “cũ”"));
}

TEST(RehearsalTest, EveryKindOfExpectationCanFail) {
  const auto [result, lines] = played(storyOf(
      editor, dictation,
      R"({"fields": {"A/f": "Hai"}, "pasteboard": "x", "history": [], "overlay": "recording", "alerts": ["a"],
          "review": "r", "listening": true})"));
  EXPECT_THAT(result.failures,
              ElementsAre("field A/f: wanted “Hai”, found “Một”", "pasteboard: wanted “x”, found nothing",
                          "history: wanted [], found [“Một”]", "overlay: wanted recording, found hidden",
                          "alerts: wanted [“a”], found []", "review: wanted “r”, found nothing",
                          "listening: wanted yes, found no"));
  EXPECT_THAT(lines, Contains(HasSubstr("FAILED")).Times(7));
}

TEST(RehearsalTest, TheSameStoryGivesTheSameTimeline) {
  std::ifstream file(TAVELO_EXAMPLES "/07-two-dictations-within-four-seconds.json");
  const std::string json{std::istreambuf_iterator<char>(file), {}};
  const auto story = parseStory(json);
  ASSERT_TRUE(std::holds_alternative<Story>(story));
  EXPECT_EQ(played(std::get<Story>(story)).lines, played(std::get<Story>(story)).lines);
}

TEST(RehearsalReviewWindowTest, ReviewThatBeginsInsideTheCallbackStaysOpen) {
  RehearsalReviewWindow window;
  window.show("một", [&](const std::string&) { window.show("hai", nullptr); });
  window.confirm(std::nullopt);
  EXPECT_EQ(window.text(), std::optional<std::string>("hai"));
  window.confirm(std::nullopt);
  EXPECT_EQ(window.text(), std::nullopt);
}

/// A recogniser that reports how many samples were not silent.
class CountingSpeech final : public platform::Speech {
 public:
  explicit CountingSpeech(platform::MainQueue& mainQueue) : mainQueue_(mainQueue) {}
  std::shared_ptr<platform::SpeechRecognizer> makeRecognizer(const std::string&) override {
    return std::make_shared<Recognizer>(mainQueue_);
  }
  std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest> makeAudioBufferRecognitionRequest()
      override {
    return std::make_shared<platform::BufferedRecognitionRequest>();
  }
  void requestAuthorization(std::function<void(platform::SpeechAuthorizationStatus)> handler) override {
    mainQueue_.async([handler] { handler(platform::SpeechAuthorizationStatus::authorized); });
  }

 private:
  struct Task final : platform::SpeechRecognitionTask {
    void cancel() override {}
  };
  struct Recognizer final : platform::SpeechRecognizer {
    explicit Recognizer(platform::MainQueue& queue) : mainQueue(queue) {}
    bool isAvailable() override { return true; }
    std::shared_ptr<platform::SpeechRecognitionTask> recognitionTask(
        std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest> request,
        ResultHandler handler) override {
      auto& sound = static_cast<platform::BufferedRecognitionRequest&>(*request);
      sound.onArrival([&sound, &queue = mainQueue, handler, loud = std::make_shared<std::ptrdiff_t>(0)] {
        while (const auto buffer = sound.take().buffer)
          *loud += std::ranges::count_if(buffer->samples, [](auto each) { return each != 0; });
        queue.async([handler, words = "nghe " + std::to_string(*loud)] {
          handler(platform::SpeechRecognitionResult{words, false}, std::nullopt);
        });
      });
      return std::make_shared<Task>();
    }
    platform::MainQueue& mainQueue;
  };

  platform::MainQueue& mainQueue_;
};

TEST(RehearsalWithAudioTest, RealSoundReachesTheRecogniserAndItsWordsTheField) {
  const auto story = storyOf(editor, R"([{"at": 0.02, "press": "fn"}, {"at": 0.03, "hears": "không"},
                                         {"at": 0.04, "release": "fn"}])",
                             R"({"fields": {"A/f": "không kiểm tra"}})");
  const RehearsalAudio audio{
      std::vector<std::int16_t>(3000, 100),
      [](platform::MainQueue& queue) { return std::make_unique<CountingSpeech>(queue); },
      platform::Seconds{0.1}, simulated::DesktopOptions::Time::virtualTime};
  const auto result = rehearse(story, audio, [](const TimelineEntry&) {});
  EXPECT_THAT(result.failures, IsEmpty());
  EXPECT_EQ(result.fields.at("A/f"), "Nghe 3000");
  EXPECT_THAT(result.history, ElementsAre("Nghe 3000"));
}

}  // namespace
}  // namespace tavelo::rehearsal
