// What the doctor of a Mac asks the system, against fakes that answer.
#include <algorithm>
#include <vector>

#import <AVFoundation/AVFoundation.h>
#import <ApplicationServices/ApplicationServices.h>
#import <Carbon/Carbon.h>
#import <Speech/Speech.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include "commands/MacDiagnosis.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "tests/macos/fakes/Fakes.h"

namespace {

/// What the system answers.
struct System {
  bool listenEventAccess = true;
  std::vector<CGEventTapInformation> taps;
  bool secureInput = false;
  NSObject* globeKey = nil;
} theSystem;

CGEventTapInformation tapOf(pid_t process, bool enabled) {
  CGEventTapInformation tap{};
  tap.tappingProcess = process;
  tap.enabled = enabled;
  return tap;
}

}  // namespace

AVMediaType const AVMediaTypeAudio = @"soun";
bool CGPreflightListenEventAccess() { return theSystem.listenEventAccess; }
Boolean IsSecureEventInputEnabled() { return theSystem.secureInput; }
CGError CGGetEventTapList(uint32_t size, CGEventTapInformation* taps, uint32_t* count) {
  *count = static_cast<uint32_t>(theSystem.taps.size());
  if (taps != nullptr) std::copy_n(theSystem.taps.begin(), std::min<std::size_t>(size, *count), taps);
  return kCGErrorSuccess;
}
CFPropertyListRef CFPreferencesCopyAppValue(CFStringRef key, CFStringRef application) {
  EXPECT_STREQ(((__bridge NSString*)key).UTF8String, "AppleFnUsageType");
  EXPECT_STREQ(((__bridge NSString*)application).UTF8String, "com.apple.HIToolbox");
  return CFBridgingRetain(theSystem.globeKey);
}

@implementation AVCaptureDevice
@end
@implementation SFSpeechRecognizer
@end

namespace tavelo {
namespace {

class MacExaminationTest : public fakes::FakeFrameworks {
 protected:
  ~MacExaminationTest() override { theSystem = {}; }
  simulated::SimulatedDesktop desktop_;
};

TEST_F(MacExaminationTest, ReadsEachServiceOnce) {
  fakes::answerWith("defaultDeviceWithMediaType:", [AVCaptureDevice new]);
  fakes::answerWith("authorizationStatus", NSInteger{2});
  theSystem = {
      true, {tapOf(getpid() + 1, false), tapOf(getpid(), true)}, true, [NSNumber numberWithInteger:2]};
  const auto facts = examineMac();
  EXPECT_TRUE(facts.accessibilityTrusted && facts.listenEventAccess && facts.monitors && facts.secureInput);
  EXPECT_EQ(facts.tapEnabled, true);
  EXPECT_EQ(facts.globeKey, GlobeKeyUsage::showEmoji);
  EXPECT_TRUE(facts.hasSoundInput && facts.hasRecognizer && facts.recognizerIsAvailable);
  EXPECT_EQ(facts.speech, platform::SpeechAuthorizationStatus::restricted);
  EXPECT_THAT(facts.cacheFolder, testing::EndsWith("/Tavelo"));
}

TEST_F(MacExaminationTest, TakesAbsentAndForeignAnswersForWhatTheyAre) {
  theSystem = {false, {tapOf(getpid() + 1, true)}, false, @"2"};
  auto facts = examineMac();
  EXPECT_FALSE(facts.listenEventAccess || facts.secureInput || facts.hasSoundInput);
  EXPECT_EQ(facts.tapEnabled, std::nullopt) << "another program's";
  EXPECT_EQ(facts.globeKey, std::nullopt) << "no number";
  theSystem.taps = {tapOf(getpid(), false)};
  EXPECT_EQ(examineMac().tapEnabled, false) << "switched off";
}

}  // namespace
}  // namespace tavelo
