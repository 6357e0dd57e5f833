#include <thread>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/simulated/SimulatedDesktop.h"
#include "speech/PermissionService.h"

namespace tavelo {
namespace {

using platform::CaptureAuthorizationStatus;
using platform::Seconds;
using platform::SpeechAuthorizationStatus;
using simulated::PromptAnswer;
using testing::ElementsAre;
using testing::IsEmpty;

class PermissionServiceTest : public testing::Test {
 protected:
  void ask() {
    service_.requestSpeechAndMicrophone([this](bool granted) {
      answers_.push_back(granted);
      answeredOnMainThread_ = desktop_.loop().isMainThread();
    });
  }

  simulated::SimulatedDesktop desktop_;
  PermissionService service_;
  std::vector<bool> answers_;
  bool answeredOnMainThread_ = false;
};

TEST_F(PermissionServiceTest, GrantedEarlierIsAnsweredLaterWithoutAnyPrompt) {
  ask();
  EXPECT_THAT(answers_, IsEmpty());
  desktop_.advance(Seconds{1});
  EXPECT_THAT(answers_, ElementsAre(true));
  EXPECT_EQ(desktop_.audio().prompts() + desktop_.speech().prompts(), 0);
  ask();
  desktop_.advance(Seconds{1});
  EXPECT_EQ(desktop_.speech().authorizationRequests(), 2) << "speech is asked for every time";
}

TEST_F(PermissionServiceTest, RefusedMicrophoneIsAnsweredInsideTheCallAndSpeechIsNotAsked) {
  for (const auto status : {CaptureAuthorizationStatus::denied, CaptureAuthorizationStatus::restricted}) {
    desktop_.audio().setAuthorization(status);
    answers_.clear();
    ask();
    EXPECT_THAT(answers_, ElementsAre(false));
  }
  EXPECT_EQ(desktop_.speech().authorizationRequests(), 0);
}

TEST_F(PermissionServiceTest, MicrophonePromptLeadsToTheSpeechPromptOnlyWhenAllowed) {
  desktop_.audio().setAuthorization(CaptureAuthorizationStatus::notDetermined);
  desktop_.speech().setAuthorization(SpeechAuthorizationStatus::notDetermined);
  const PromptAnswer foreign{.granted = true, .when = PromptAnswer::When::later, .after = Seconds{1}};
  PromptAnswer refusal = foreign;
  refusal.granted = false;

  desktop_.audio().setPromptAnswer(foreign);
  desktop_.speech().setPromptAnswer(refusal);
  ask();
  desktop_.advance(Seconds{1.5});
  EXPECT_THAT(answers_, IsEmpty());
  desktop_.advance(Seconds{1});
  EXPECT_THAT(answers_, ElementsAre(false));
  EXPECT_FALSE(answeredOnMainThread_);
  EXPECT_EQ(desktop_.audio().prompts(), 1);
  EXPECT_EQ(desktop_.speech().prompts(), 1);

  desktop_.audio().setAuthorization(CaptureAuthorizationStatus::notDetermined);
  desktop_.audio().setPromptAnswer(refusal);
  ask();
  desktop_.advance(Seconds{5});
  EXPECT_THAT(answers_, ElementsAre(false, false));
  EXPECT_EQ(desktop_.speech().authorizationRequests(), 1);
}

TEST_F(PermissionServiceTest, RefusedSpeechAndAPromptWithoutAnswer) {
  for (const auto status : {SpeechAuthorizationStatus::denied, SpeechAuthorizationStatus::restricted,
                            SpeechAuthorizationStatus::notDetermined}) {
    desktop_.speech().setAuthorization(SpeechAuthorizationStatus::authorized);
    answers_.clear();
    ask();
    desktop_.speech().setAuthorization(status);
    desktop_.advance(Seconds{1});
    EXPECT_THAT(answers_, ElementsAre(false));
  }
  desktop_.audio().setAuthorization(CaptureAuthorizationStatus::notDetermined);
  desktop_.audio().setPromptAnswer({.when = PromptAnswer::When::never});
  answers_.clear();
  ask();
  desktop_.advance(Seconds{1000});
  EXPECT_THAT(answers_, IsEmpty());
}

TEST_F(PermissionServiceTest, AccessibilityIsPromptedForOnlyWithoutTrust) {
  EXPECT_TRUE(service_.isAccessibilityTrusted());
  service_.requestAccessibilityIfNeeded();
  EXPECT_EQ(desktop_.accessibility().prompts(), 0);
  desktop_.accessibility().setTrusted(false);
  EXPECT_FALSE(service_.isAccessibilityTrusted());
  EXPECT_EQ(desktop_.accessibility().prompts(), 0);
  service_.requestAccessibilityIfNeeded();
  EXPECT_EQ(desktop_.accessibility().prompts(), 1);
}

}  // namespace
}  // namespace tavelo
