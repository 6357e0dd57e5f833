#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/simulated/SimulatedDesktop.h"
#include "speech/SpeechDictationController.h"

namespace tavelo {
namespace {

using platform::Seconds;
using simulated::RecognitionStep;
using testing::ElementsAre;
using testing::IsEmpty;

class SpeechDictationControllerTest : public testing::Test {
 protected:
  SpeechDictationControllerTest() {
    controller_->onStateChange = [this](DictationState state) {
      EXPECT_EQ(controller_->state(), state);
      calls_.push_back(state == DictationState::listening ? "listening" : "idle");
    };
    controller_->onPartialTranscript = [this](const std::string& text) {
      calls_.push_back("partial " + text);
    };
    controller_->onTranscriptReady = [this](const std::string& text) { calls_.push_back("ready " + text); };
    controller_->onError = [this](const std::string& message) { calls_.push_back("error " + message); };
  }

  void start() { controller_->start("vi_VN"); }
  void wait(double seconds) { desktop_.advance(Seconds{seconds}); }
  std::vector<std::string> taken() { return std::exchange(calls_, {}); }

  simulated::SimulatedDesktop desktop_;
  std::unique_ptr<SpeechDictationController> controller_ = std::make_unique<SpeechDictationController>();
  std::vector<std::string> calls_;
};

TEST_F(SpeechDictationControllerTest, StopHandsOverTheLastResultAtOnceAndOnlyOnce) {
  desktop_.speech().addScript(
      {{RecognitionStep::partial(Seconds{0.5}, "xin"), RecognitionStep::partial(Seconds{0.8}, "xin chào")}});
  start();
  start();
  EXPECT_THAT(taken(), ElementsAre("listening"));
  wait(1.0);
  controller_->stop();
  controller_->stop();
  EXPECT_THAT(taken(), ElementsAre("partial xin", "partial xin chào", "idle", "ready xin chào"));
  EXPECT_FALSE(desktop_.microphone().isCapturing());
  EXPECT_FALSE(desktop_.microphone().hasTap());
  EXPECT_EQ(desktop_.microphone().starts(), 1);
  const auto request = desktop_.speech().requests().at(0)->state();
  EXPECT_TRUE(request.ended && request.partialResults);
  EXPECT_TRUE(desktop_.speech().tasks().at(0)->isCancelled());
  EXPECT_GT(request.frames, 14000U) << "a second of sound without the last, incomplete buffer";
}

TEST_F(SpeechDictationControllerTest, CancelDropsWhatWasHeardAndEndsTheTaskBeforeTheAudio) {
  desktop_.speech().addScript({{RecognitionStep::partial(Seconds{0.5}, "xin"),
                                RecognitionStep::finalResult(Seconds{1.5}, "xin chào")},
                               true});
  std::vector<std::string> speech;
  desktop_.observe([&](const simulated::WorldEvent& event) {
    if (event.kind == simulated::WorldEvent::Kind::speech) speech.push_back(event.text);
  });
  controller_->cancel();
  EXPECT_THAT(taken(), IsEmpty());
  start();
  wait(1.0);
  speech.clear();
  controller_->cancel();
  controller_->cancel();
  EXPECT_THAT(speech, ElementsAre("task cancelled", "end of audio"));
  EXPECT_FALSE(desktop_.microphone().isCapturing());
  EXPECT_TRUE(desktop_.speech().requests().at(0)->state().released);
  wait(1.0);
  EXPECT_EQ(speech.back(), "final “xin chào” after the cancel");
  EXPECT_THAT(taken(), ElementsAre("listening", "partial xin", "idle"));
  start();
  controller_->stop();
  EXPECT_THAT(taken(), ElementsAre("listening", "idle", "ready ")) << "the next dictation has none of it";
}

TEST_F(SpeechDictationControllerTest, FinalResultEndsTheDictationByItself) {
  desktop_.speech().addScript({{RecognitionStep::finalResult(Seconds{0.5}, "xong")}});
  start();
  wait(1.0);
  EXPECT_THAT(taken(), ElementsAre("listening", "partial xong", "idle", "ready xong"));
}

TEST_F(SpeechDictationControllerTest, ErrorHandsOverWhatWasRecognisedOrEndsSilently) {
  // Words and error come in one report.
  desktop_.speech().addScript({{{.after = Seconds{0.5}, .transcript = "dở", .error = "đứt"}}});
  desktop_.speech().addScript({{RecognitionStep::failure(Seconds{0.5}, "đứt")}});
  start();
  wait(1.0);
  EXPECT_THAT(taken(), ElementsAre("listening", "partial dở", "idle", "ready dở"));
  start();
  wait(1.0);
  EXPECT_THAT(taken(), ElementsAre("listening", "idle"))
      << "the first dictation's words are not handed over again";
  // This is how a backend takes back what was heard.
  desktop_.speech().addScript({{RecognitionStep::partial(Seconds{0.5}, "mật khẩu"),
                                {.after = Seconds{0.6}, .transcript = "", .error = "bí mật"}}});
  start();
  wait(1.0);
  EXPECT_THAT(taken(), ElementsAre("listening", "partial mật khẩu", "partial ", "idle"));
}

TEST_F(SpeechDictationControllerTest, LateResultsOfACancelledTaskDoNotReachTheNextDictation) {
  desktop_.speech().addScript(
      {{RecognitionStep::partial(Seconds{0.5}, "cũ"), RecognitionStep::failure(Seconds{0.6}, "đứt")}, true});
  desktop_.speech().addScript({{RecognitionStep::partial(Seconds{1.0}, "mới")}});
  start();
  wait(0.2);
  controller_->stop();
  start();
  taken();
  wait(2.0);
  EXPECT_THAT(taken(), ElementsAre("partial mới"));
  controller_->stop();
  EXPECT_THAT(taken(), ElementsAre("idle", "ready mới"));
}

TEST_F(SpeechDictationControllerTest, StartsThatCannotSucceedSaySoAndStayIdle) {
  controller_->start("en_US");
  EXPECT_THAT(taken(), ElementsAre("error macOS không khởi tạo được bộ nhận diện tiếng Việt."));
  desktop_.speech().setAvailable(false);
  start();
  EXPECT_THAT(taken(),
              ElementsAre("error Bộ nhận diện giọng nói hiện không sẵn sàng. Hãy kiểm tra kết nối hoặc "
                          "thử lại."));
  desktop_.speech().setAvailable(true);
  desktop_.microphone().setStartFailure("thiết bị bận");
  start();
  EXPECT_THAT(taken(), ElementsAre("error Không mở được microphone: thiết bị bận"));
  EXPECT_EQ(controller_->state(), DictationState::idle);
  EXPECT_TRUE(desktop_.speech().requests().back()->state().released);
  EXPECT_THAT(desktop_.speech().tasks(), IsEmpty());

  desktop_.microphone().setStartFailure(std::nullopt);
  start();
  EXPECT_THAT(taken(), ElementsAre("listening")) << "the next start finds everything in order";
}

TEST_F(SpeechDictationControllerTest, ACallbackMayStopTheDictationThatItIsToldOf) {
  controller_->onStateChange = [this](DictationState state) {
    if (state == DictationState::listening) controller_->stop();
  };
  start();
  EXPECT_THAT(taken(), ElementsAre("ready "));
  EXPECT_THAT(desktop_.speech().tasks(), IsEmpty());
  EXPECT_FALSE(desktop_.microphone().isCapturing());
}

TEST_F(SpeechDictationControllerTest, StartInsideACallbackLeavesTheEndedTranscriptAlone) {
  const RecognitionStep word = RecognitionStep::partial(Seconds{0.5}, "một");
  desktop_.speech().addScript({{word}});
  desktop_.speech().addScript({});
  desktop_.speech().addScript({{word}});
  controller_->onTranscriptReady = [this](const std::string& text) {
    start();
    calls_.push_back("ready " + text);
  };
  start();
  wait(1.0);
  controller_->stop();
  EXPECT_THAT(taken(), ElementsAre("listening", "partial một", "idle", "listening", "ready một"));
  controller_->onTranscriptReady = nullptr;
  controller_->stop();

  controller_->onStateChange = [this](DictationState state) {
    if (state == DictationState::idle) start();
  };
  controller_->onTranscriptReady = [this](const std::string& text) { calls_.push_back("ready " + text); };
  start();
  wait(1.0);
  taken();
  controller_->stop();
  EXPECT_THAT(taken(), ElementsAre("ready một"));
}

TEST_F(SpeechDictationControllerTest, ResultThatLedToANewDictationDoesNotEndIt) {
  // Words, their end and an error come in one report.
  desktop_.speech().addScript(
      {{{.after = Seconds{0.5}, .transcript = "một", .isFinal = true, .error = "đứt"}}});
  controller_->onPartialTranscript = [this](const std::string& text) {
    controller_->stop();
    start();
    calls_.push_back("partial " + text);
  };
  start();
  wait(1.0);
  EXPECT_THAT(taken(), ElementsAre("listening", "idle", "ready một", "listening", "partial một"));
  EXPECT_EQ(controller_->state(), DictationState::listening);
}

TEST_F(SpeechDictationControllerTest, ControllerThatIsGoneHearsNothingMoreAndLeavesTheMicrophone) {
  desktop_.speech().addScript({{RecognitionStep::partial(Seconds{0.5}, "muộn")}, true});
  start();
  taken();
  controller_.reset();
  EXPECT_FALSE(desktop_.microphone().isCapturing());
  wait(1.0);
  EXPECT_THAT(taken(), IsEmpty());
}

}  // namespace
}  // namespace tavelo
