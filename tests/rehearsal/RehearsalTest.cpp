#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <variant>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

const std::string press = R"([{"at": 1, "press": "fn"}])";

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

/// Endings of a dictation that the examples do not show. Each must leave the desktop as described.
struct Ending {
  const char* name;
  std::string desktop;
  std::string steps;
  std::string expectation;
};

void PrintTo(const Ending& tested, std::ostream* out) { *out << tested.name; }

class EndingTest : public testing::TestWithParam<Ending> {};

INSTANTIATE_TEST_SUITE_P(
    Stories, EndingTest,
    testing::Values(
        Ending{"quitWhileListening", editor,
               R"([{"at": 1, "press": "fn"}, {"at": 2, "hears": "một"}, {"at": 3, "command": "quit"},
                   {"at": 4, "release": "fn"}])",
               R"({"fields": {"A/f": ""}, "history": [], "overlay": "hidden"})"},
        Ending{"recogniserDiesBeforeAnyWord", editor,
               R"([{"at": 1, "press": "fn"}, {"at": 2, "recognitionError": true}, {"at": 2.01, "expect":
                   {"overlay": "hidden", "listening": false}}, {"at": 3, "release": "fn"}])",
               R"({"fields": {"A/f": ""}, "history": [], "alerts": []})"},
        Ending{
            "recogniserDiesMidWord", editor,
            R"([{"at": 1, "press": "fn"}, {"at": 2, "hears": "một ha"}, {"at": 2, "recognitionError": true},
                   {"at": 3, "release": "fn"}])",
            R"({"fields": {"A/f": "Một ha"}, "history": ["Một ha"], "alerts": []})"},
        Ending{"fullDiskLosesNothingButTheFile",
               R"({"applications": [{"name": "A", "fields": [{"name": "f"}]}], "disk": "full"})", dictation,
               R"({"fields": {"A/f": "Một"}, "history": [], "alerts": []})"},
        Ending{"noRecogniser", R"({"applications": [], "recognizer": "missing"})", press,
               R"({"alerts": ["macOS không khởi tạo được bộ nhận diện tiếng Việt."], "overlay": "hidden"})"},
        Ending{"microphoneBusy", R"({"applications": [], "microphoneError": "bận"})", press,
               R"({"alerts": ["Không mở được microphone: bận"], "overlay": "hidden", "listening": false})"},
        Ending{"lateResultIsIgnored", editor,
               R"([{"at": 1, "press": "fn"}, {"at": 2, "hears": "một"}, {"at": 3, "release": "fn"},
                   {"at": 3.1, "hears": "một hai"}])",
               R"({"fields": {"A/f": "Một"}, "history": ["Một"]})"},
        Ending{"trustGrantedByTheCommand",
               R"({"applications": [{"name": "A", "fields": [{"name": "f"}]}], "accessibility": false})",
               R"([{"at": 1, "press": "fn"}, {"at": 1.4, "expect": {"listening": false}},
                   {"at": 1.5, "release": "fn"}, {"at": 2, "command": "showPermissions"},
                   {"at": 2.5, "grantAccessibility": true}, {"at": 4, "press": "fn"}, {"at": 5, "hears": "một"},
                   {"at": 6, "release": "fn"}])",
               R"({"fields": {"A/f": "Một"}, "history": ["Một"]})"},
        Ending{"passwordFieldGetsAPasteAndNoMenu",
               R"({"applications": [{"name": "A", "fields": [{"name": "f", "kind": "password"}]}]})",
               dictation, R"({"fields": {"A/f": "Một"}, "pasteboard": null})"}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST_P(EndingTest, LeavesTheDesktopAsDescribed) {
  const auto& ending = GetParam();
  const auto [result, lines] = played(storyOf(ending.desktop, ending.steps, ending.expectation));
  EXPECT_THAT(result.failures, IsEmpty()) << testing::PrintToString(lines);
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
    return std::make_shared<Request>();
  }
  void requestAuthorization(std::function<void(platform::SpeechAuthorizationStatus)> handler) override {
    mainQueue_.async([handler] { handler(platform::SpeechAuthorizationStatus::authorized); });
  }

 private:
  struct Request final : platform::SpeechAudioBufferRecognitionRequest {
    void setShouldReportPartialResults(bool) override {}
    void append(const platform::AudioBuffer& buffer) override {
      if (arrived) arrived(buffer);
    }
    void endAudio() override {}
    std::function<void(const platform::AudioBuffer&)> arrived;
  };
  struct Task final : platform::SpeechRecognitionTask {
    void cancel() override {}
  };
  struct Recognizer final : platform::SpeechRecognizer {
    explicit Recognizer(platform::MainQueue& queue) : mainQueue(queue) {}
    bool isAvailable() override { return true; }
    std::shared_ptr<platform::SpeechRecognitionTask> recognitionTask(
        std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest> request,
        ResultHandler handler) override {
      static_cast<Request&>(*request).arrived = [&queue = mainQueue, handler,
                                                 loud = 0](const platform::AudioBuffer& buffer) mutable {
        for (const auto sample : buffer.samples) loud += sample != 0;
        queue.async([handler, loud] {
          handler(platform::SpeechRecognitionResult{"nghe " + std::to_string(loud), false}, std::nullopt);
        });
      };
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
