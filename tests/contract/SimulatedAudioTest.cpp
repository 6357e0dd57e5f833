#include <chrono>
#include <cstdint>
#include <numeric>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/BufferedRecognitionRequest.h"
#include "platform/simulated/SimulatedDesktop.h"

namespace tavelo::simulated {
namespace {

using platform::AudioBuffer;
using platform::Seconds;
using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

TEST(SimulatedMicrophones, DeliverBuffersWhenTheirLastFrameWasHeard) {
  SimulatedDesktop desktop;
  std::vector<std::int16_t> played(2500);
  std::iota(played.begin(), played.end(), std::int16_t{1});
  desktop.microphone().play(played);
  const auto engine = platform::current().audio.makeEngine();
  std::vector<std::int16_t> heard;
  std::vector<platform::Uptime> times;
  bool onMain = false;
  desktop.advance(Seconds{1});
  engine->installTap(0, 1024, engine->inputFormat(0), [&](const AudioBuffer& buffer) {
    onMain = onMain || platform::current().mainQueue.isMainThread();
    heard.insert(heard.end(), buffer.samples.begin(), buffer.samples.end());
    times.push_back(platform::current().clock.uptime());
  });
  EXPECT_FALSE(engine->start());
  desktop.advance(Seconds{0.256});
  engine->stop();
  desktop.advance(Seconds{1});
  EXPECT_FALSE(onMain);
  EXPECT_THAT(times, ElementsAre(1064ms, 1128ms, 1192ms, 1256ms));
  played.resize(4096, 0);
  EXPECT_EQ(heard, played);
  EXPECT_EQ(desktop.microphone().lastSampleDelivered(), 1192ms);
}

TEST(SimulatedMicrophones, RealTimeCaptureIsAThreadThatStopsWithTheEngine) {
  SimulatedDesktop desktop{{.time = DesktopOptions::Time::realTime}};
  desktop.microphone().play(std::vector<std::int16_t>(40, 7));
  const auto engine = platform::current().audio.makeEngine();
  int onMain = 0;
  int buffers = 0;
  engine->installTap(0, 16, engine->inputFormat(0), [&](const AudioBuffer& buffer) {
    onMain += platform::current().mainQueue.isMainThread() ? 1 : 0;
    buffers += buffer.samples.size() == 16 ? 1 : 100;
  });
  EXPECT_FALSE(engine->start());
  bool finished = false;
  desktop.observe(
      [&](const WorldEvent& event) { finished = finished || event.text == "last sample delivered"; });
  EXPECT_TRUE(desktop.loop().runUntil([&] { return finished; }, Seconds{10}));
  engine->stop();
  const int atStop = buffers;
  desktop.advance(Seconds{0.005});
  EXPECT_EQ(buffers, atStop);
  EXPECT_GE(buffers, 3);
  EXPECT_EQ(onMain, 0);
}

TEST(SimulatedMicrophones, StartFailsWithItsText) {
  SimulatedDesktop desktop;
  const auto engine = platform::current().audio.makeEngine();
  desktop.microphone().setStartFailure("Thiết bị đang bận.");
  EXPECT_EQ(engine->start()->localizedDescription, "Thiết bị đang bận.");
  EXPECT_FALSE(desktop.microphone().isCapturing());
  desktop.microphone().setStartFailure(std::nullopt);
  EXPECT_FALSE(engine->start());
}

TEST(SimulatedPermissions, AnswersComeWhenThePersonGivesThemOnAnotherThread) {
  using When = PromptAnswer::When;
  using platform::CaptureAuthorizationStatus;
  SimulatedDesktop desktop;
  platform::Audio& audio = platform::current().audio;
  std::vector<std::string> answers;
  const auto ask = [&](const PromptAnswer& answer) {
    desktop.audio().setAuthorization(CaptureAuthorizationStatus::notDetermined);
    desktop.audio().setPromptAnswer(answer);
    audio.requestCaptureAccess([&](bool granted) {
      answers.push_back(std::string{granted ? "yes" : "no"} +
                        (platform::current().mainQueue.isMainThread() ? " main" : " foreign"));
    });
  };
  ask({.granted = false, .when = When::later, .after = Seconds{2}});
  desktop.advance(Seconds{1.9});
  EXPECT_THAT(answers, IsEmpty());
  desktop.advance(Seconds{0.1});
  EXPECT_THAT(answers, ElementsAre("no foreign"));
  EXPECT_EQ(audio.captureAuthorizationStatus(), CaptureAuthorizationStatus::denied);
  ask({.when = When::never});
  desktop.advance(Seconds{1000});
  EXPECT_EQ(answers.size(), 1U);
}

TEST(SimulatedPermissions, SpeechAnswerNeverComesInsideTheCall) {
  SimulatedDesktop desktop;
  std::vector<bool> onMain;
  platform::current().speech.requestAuthorization([&](platform::SpeechAuthorizationStatus status) {
    EXPECT_EQ(status, platform::SpeechAuthorizationStatus::authorized);
    onMain.push_back(platform::current().mainQueue.isMainThread());
  });
  EXPECT_THAT(onMain, IsEmpty());
  desktop.advance(Seconds{0});
  EXPECT_THAT(onMain, ElementsAre(false));
  EXPECT_EQ(desktop.speech().prompts(), 0);
}

class SimulatedRecognition : public testing::Test {
 protected:
  std::shared_ptr<platform::SpeechRecognitionTask> start(bool partialResults = true) {
    platform::Speech& speech = platform::current().speech;
    auto request = speech.makeAudioBufferRecognitionRequest();
    request->setShouldReportPartialResults(partialResults);
    request->append({{16000, 1}, std::vector<std::int16_t>(320)});
    return speech.makeRecognizer("vi_VN")->recognitionTask(
        request, [this](const auto& result, const auto& error) {
          if (result) results_.push_back(result->formattedString + (result->isFinal ? "." : ""));
          if (error) results_.push_back("!" + error->localizedDescription);
        });
  }

  SimulatedDesktop desktop_;
  std::vector<std::string> results_;
  const RecognitionScript script_{{RecognitionStep::partial(Seconds{0.5}, "xin"),
                                   RecognitionStep::finalResult(Seconds{1}, "xin chào"),
                                   RecognitionStep::failure(Seconds{1.5}, "too late")}};
};

TEST_F(SimulatedRecognition, FollowsItsScriptUntilTheEnd) {
  desktop_.speech().addScript(script_);
  start();
  EXPECT_FALSE(desktop_.speech().requests()[0]->state().released);
  desktop_.advance(Seconds{0.5});
  EXPECT_THAT(results_, ElementsAre("xin"));
  desktop_.advance(Seconds{5});
  EXPECT_THAT(results_, ElementsAre("xin", "xin chào."));
  EXPECT_EQ(desktop_.speech().requests()[0]->state().frames, 320U);
  EXPECT_TRUE(desktop_.speech().requests()[0]->state().released);
  EXPECT_EQ(platform::current().speech.makeRecognizer("de_DE"), nullptr);
}

TEST_F(SimulatedRecognition, CancelEndsItUnlessResultsAreOnTheirWay) {
  desktop_.speech().addScript(script_);
  RecognitionScript late = script_;
  late.answersAfterCancel = true;
  desktop_.speech().addScript(late);
  start()->cancel();
  EXPECT_TRUE(desktop_.speech().requests()[0]->state().released);
  desktop_.advance(Seconds{5});
  EXPECT_THAT(results_, IsEmpty());
  std::vector<std::string> events;
  desktop_.observe([&](const WorldEvent& event) { events.push_back(event.text); });
  start(false)->cancel();
  desktop_.advance(Seconds{5});
  EXPECT_THAT(results_, ElementsAre("xin chào."));
  EXPECT_THAT(events,
              ElementsAre("task started for vi_VN", "task cancelled", "final “xin chào” after the cancel"));
}

TEST(SimulatedSpeechReplacement, AnotherRecognitionTakesItsPlace) {
  class NoSpeech final : public platform::Speech {
   public:
    std::shared_ptr<platform::SpeechRecognizer> makeRecognizer(const std::string&) override {
      return nullptr;
    }
    std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest> makeAudioBufferRecognitionRequest()
        override {
      return std::make_shared<platform::BufferedRecognitionRequest>();
    }
    void requestAuthorization(std::function<void(platform::SpeechAuthorizationStatus)>) override {}
  };
  SimulatedDesktop desktop{{.speech = [](platform::MainQueue&) { return std::make_unique<NoSpeech>(); }}};
  EXPECT_EQ(platform::current().speech.makeRecognizer("vi_VN"), nullptr);
}

}  // namespace
}  // namespace tavelo::simulated
