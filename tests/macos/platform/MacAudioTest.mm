#include <gmock/gmock.h>

#include "platform/macos/MacAudio.h"
#include "platform/simulated/VirtualTimeLoop.h"
#include "tests/macos/fakes/Sound.h"

namespace tavelo::macos {
namespace {

using testing::ElementsAre;

class MacAudioTest : public fakes::FakeFrameworks {
 protected:
  MacAudioTest() {
    fakes::answerWith("outputFormatForBus:", format_);
    fakes::answer("installTapOnBus:bufferSize:format:block:", [this](fakes::Call& call) {
      EXPECT_EQ(call.argument<NSUInteger>(0), 0U);
      EXPECT_EQ(call.argument<AVAudioFrameCount>(1), 1024U);
      EXPECT_EQ(call.argument<void*>(2), (__bridge void*)format_) << "the node's own format";
      tap_ = [(__bridge AVAudioNodeTapBlock)call.argument<void*>(3) copy];
    });
    fakes::answerWith("startAndReturnError:", YES);
    audio_.onInterrupted = [this] { ++interruptions_; };
    engine_ = audio_.makeEngine();
    fakes::takeCalls();
  }
  ~MacAudioTest() override { tap_ = nil; }
  static void changeDevice() { fakes::notify("AVAudioEngineConfigurationChangeNotification"); }
  std::optional<platform::PlatformError> start() {
    const auto format = engine_->inputFormat(0);
    engine_->removeTap(0);
    engine_->installTap(0, 1024, format,
                        [this](const platform::AudioBuffer& sound) { heard_.push_back(sound); });
    engine_->prepare();
    return engine_->start();
  }
  void raise(const char* reason) {
    raised_ = [[NSException alloc] init];
    raised_.reason = fakeString(reason);
    objc_exception_throw((__bridge void*)raised_);
  }

  simulated::VirtualTimeLoop loop_;
  MacAudio audio_{loop_};
  AVAudioFormat* format_ = [[AVAudioFormat alloc] initStandardFormatWithSampleRate:48000 channels:2];
  AVAudioNodeTapBlock tap_ = nil;
  std::unique_ptr<platform::AudioEngine> engine_;
  std::vector<platform::AudioBuffer> heard_;
  NSException* raised_ = nil;
  int interruptions_ = 0;
};

TEST_F(MacAudioTest, SoundOfTheTapComesInterleavedUntilTheTapIsRemoved) {
  EXPECT_EQ(start(), std::nullopt);
  AVAudioPCMBuffer* const buffer = [[AVAudioPCMBuffer alloc] initWithPCMFormat:format_ frameCapacity:3];
  buffer.frameLength = 3;
  buffer->samples[0][0] = 0.5F;
  buffer->samples[1][0] = -0.5F;
  buffer->samples[0][1] = 4.0F;
  buffer->samples[1][1] = -4.0F;
  buffer->samples[0][2] = NAN;
  AVAudioTime* const when = [[AVAudioTime alloc] init];
  tap_(buffer, when);
  ASSERT_EQ(heard_.size(), 1U);
  EXPECT_EQ(heard_[0].format, (platform::AudioFormat{48000, 2}));
  EXPECT_THAT(heard_[0].samples, ElementsAre(16384, -16384, 32767, -32768, 0, 0));
  engine_->stop();
  engine_->removeTap(0);
  tap_(buffer, when);
  start();
  engine_.reset();
  tap_(buffer, when);
  EXPECT_EQ(heard_.size(), 1U) << "calls that were still under way";
}

TEST_F(MacAudioTest, MissingInputIsAnErrorAndTheEngineIsNotTouched) {
  for (const auto& [rate, channels] : {std::pair{0.0, 2U}, std::pair{48000.0, 0U}}) {
    format_.sampleRate = rate;
    format_.channelCount = channels;
    fakes::takeCalls();
    ASSERT_TRUE(start().has_value());
    for (const auto& call : fakes::takeCalls()) {
      EXPECT_EQ(call.find("installTap"), std::string::npos);
      EXPECT_EQ(call.find("startAndReturnError"), std::string::npos);
    }
  }
  format_.sampleRate = 44100;
  format_.channelCount = 1;
  EXPECT_EQ(start(), std::nullopt) << "the microphone is back";
}

TEST_F(MacAudioTest, ExceptionAndErrorOfTheEngineBecomeTheErrorOfTheStart) {
  for (const char* selector : {"removeTapOnBus:", "stop"})
    fakes::answer(selector, [this](fakes::Call&) { raise("no device"); });
  EXPECT_EQ(start(), std::nullopt) << "only an old tap was to be removed";
  engine_->stop();
  NSError* const error = [[NSError alloc] init];
  error.localizedDescription = @"busy";
  fakes::answer("startAndReturnError:", [error](fakes::Call& call) {
    *call.argument<__autoreleasing NSError**>(0) = error;
    call.give(NO);
  });
  EXPECT_EQ(start()->localizedDescription, "busy");
  fakes::answer("installTapOnBus:bufferSize:format:block:",
                [this](fakes::Call&) { raise("required condition"); });
  EXPECT_EQ(start()->localizedDescription, "required condition");
  engine_.reset();
}

TEST_F(MacAudioTest, ChangeOfTheDeviceInterruptsARunningEngineOnce) {
  changeDevice();
  loop_.advance(platform::Seconds{0});
  EXPECT_EQ(interruptions_, 0) << "not running";
  start();
  changeDevice();
  changeDevice();
  EXPECT_EQ(interruptions_, 0);
  loop_.advance(platform::Seconds{0});
  EXPECT_EQ(interruptions_, 1);
  changeDevice();
  fakes::takeCalls();
  start();
  loop_.advance(platform::Seconds{0});
  EXPECT_EQ(interruptions_, 1) << "the old engine's";
  start();
  EXPECT_THAT(fakes::takeCalls(), testing::Contains("new engine").Times(1)) << "for the new device";
  changeDevice();
  engine_.reset();
  changeDevice();
  loop_.advance(platform::Seconds{0});
  EXPECT_EQ(interruptions_, 1);
}

TEST_F(MacAudioTest, PermissionForTheMicrophoneIsTheSystems) {
  fakes::answerWith("authorizationStatusForMediaType:", AVAuthorizationStatusRestricted);
  EXPECT_EQ(audio_.captureAuthorizationStatus(), platform::CaptureAuthorizationStatus::restricted);
  fakes::answer("requestAccessForMediaType:completionHandler:",
                [](fakes::Call& call) { ((__bridge void (^)(BOOL))call.argument<void*>(1))(YES); });
  bool granted = false;
  audio_.requestCaptureAccess([&](bool answered) { granted = answered; });
  EXPECT_TRUE(granted);
}

}  // namespace
}  // namespace tavelo::macos
