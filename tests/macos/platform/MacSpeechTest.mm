#include <optional>

#include <gmock/gmock.h>

#include "platform/macos/MacSpeech.h"
#include "platform/simulated/VirtualTimeLoop.h"
#include "tests/macos/fakes/Sound.h"

namespace tavelo::macos {
namespace {

using testing::ElementsAre;

using Handler = void (^)(SFSpeechRecognitionResult*, NSError*);

class MacSpeechTest : public fakes::FakeFrameworks {
 protected:
  MacSpeechTest() {
    fakes::answer("recognitionTaskWithRequest:resultHandler:", [this](fakes::Call& call) {
      handler_ = [(__bridge Handler)call.argument<void*>(1) copy];
      call.give((__bridge void*)systemTask_);
    });
  }
  std::shared_ptr<platform::SpeechRecognitionTask> begin() {
    const auto recognizer = speech_.makeRecognizer("vi_VN");
    return recognizer->recognitionTask(
        speech_.makeAudioBufferRecognitionRequest(), [this](const auto& result, const auto& error) {
          if (result) heard_.push_back(result->formattedString + (result->isFinal ? "!" : ""));
          if (error) heard_.push_back("error: " + error->localizedDescription);
        });
  }
  void say(const char* text, BOOL final = NO) {
    SFSpeechRecognitionResult* const result = [[SFSpeechRecognitionResult alloc] init];
    SFTranscription* const transcription = [[SFTranscription alloc] init];
    transcription.formattedString = fakeString(text);
    result.bestTranscription = transcription;
    result.final = final;
    handler_(result, nil);
  }

  simulated::VirtualTimeLoop loop_;
  MacSpeech speech_{loop_};
  SFSpeechRecognitionTask* systemTask_ = [[SFSpeechRecognitionTask alloc] init];
  Handler handler_ = nil;
  std::vector<std::string> heard_;
};

TEST_F(MacSpeechTest, RequestIsGivenWhatItIsToldAndNothingElse) {
  fakes::takeCalls();
  const auto request = speech_.makeAudioBufferRecognitionRequest();
  request->setShouldReportPartialResults(true);
  std::vector<float> appended;
  fakes::answer("appendAudioPCMBuffer:", [&](fakes::Call& call) {
    AVAudioPCMBuffer* const buffer = (__bridge AVAudioPCMBuffer*)call.argument<void*>(0);
    EXPECT_EQ(buffer.format.sampleRate, 48000);
    EXPECT_EQ(buffer.frameLength, 2U);
    for (const auto& channel : buffer->samples)
      appended.insert(appended.end(), channel.begin(), channel.end());
  });
  request->append({{48000, 2}, {-32768, 16384, 0, 8192}});
  request->append({{48000, 2}, {}});
  request->append({{0, 0}, {1, 2}});
  request->endAudio();
  EXPECT_THAT(appended, ElementsAre(-1.0F, 0.0F, 0.5F, 0.25F));
  const auto calls = fakes::takeCalls();
  ASSERT_EQ(calls.size(), 2U);
  EXPECT_EQ(calls.back(), "-[SFSpeechAudioBufferRecognitionRequest endAudio]");
}

TEST_F(MacSpeechTest, ResultsComeByOurMainQueueAndEndWithTheFinalOne) {
  const auto task = begin();
  say("xin");
  EXPECT_TRUE(heard_.empty());
  loop_.advance(platform::Seconds{0});
  say("xin chào", YES);
  say("late");
  loop_.advance(platform::Seconds{0});
  EXPECT_THAT(heard_, ElementsAre("xin", "xin chào!"));
  handler_ = nil;
}

TEST_F(MacSpeechTest, LateResultOfACancelledTaskNeverReachesTheNextOne) {
  const auto first = begin();
  const Handler late = handler_;
  fakes::takeCalls();
  first->cancel();
  EXPECT_THAT(fakes::takeCalls(), ElementsAre("-[SFSpeechRecognitionTask cancel]"));
  heard_.clear();
  const auto second = begin();
  NSError* const error = [[NSError alloc] init];
  error.localizedDescription = @"cancelled";
  late(nil, error);
  say("hai");
  loop_.advance(platform::Seconds{0});
  EXPECT_THAT(heard_, ElementsAre("error: cancelled", "hai")) << "each through its own handler";
  fakes::takeCalls();
  speech_.failRunningTasks("Tai nghe đã được rút ra.");
  EXPECT_THAT(fakes::takeCalls(), testing::Contains("-[SFSpeechRecognitionTask cancel]"));
  say("late");
  loop_.advance(platform::Seconds{0});
  EXPECT_EQ(heard_.back(), "error: Tai nghe đã được rút ra.");
  handler_ = nil;
}

TEST_F(MacSpeechTest, CancelledTaskThatTheSystemNeverEndsIsLetGo) {
  const auto task = begin();
  systemTask_.handler = handler_;
  handler_ = nil;
  task->cancel();
}

TEST_F(MacSpeechTest, LocaleWithoutRecogniserHasNoneAndAuthorisationIsPassedOn) {
  fakes::answerWith("initWithLocale:", (id)nil);
  EXPECT_EQ(speech_.makeRecognizer("xx_XX"), nullptr);
  fakes::answer("requestAuthorization:", [](fakes::Call& call) {
    ((__bridge void (^)(SFSpeechRecognizerAuthorizationStatus))call.argument<void*>(0))(
        SFSpeechRecognizerAuthorizationStatusRestricted);
  });
  std::optional<platform::SpeechAuthorizationStatus> status;
  speech_.requestAuthorization([&](auto answered) { status = answered; });
  EXPECT_EQ(status, platform::SpeechAuthorizationStatus::restricted);
}

}  // namespace
}  // namespace tavelo::macos
