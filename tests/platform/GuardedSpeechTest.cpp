#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/GuardedSpeech.h"
#include "platform/simulated/SimulatedDesktop.h"

namespace tavelo::platform {
namespace {

/// Answers with `secret`, at once or when the test says so.
class FakeGuard final : public SecretGuard {
 public:
  void ask(Answer answer) override {
    if (!answersLate) return answer(secret);
    waiting.push_back(std::move(answer));
  }

  Secret secret = Secret::none;
  bool answersLate = false;
  std::vector<Answer> waiting;
};

class GuardedSpeechTest : public testing::Test {
 protected:
  std::optional<SpeechAuthorizationStatus> authorization() {
    std::optional<SpeechAuthorizationStatus> answer;
    speech_.requestAuthorization([&](auto status) { answer = status; });
    desktop_.advance(Seconds{0.1});
    return answer;
  }

  /// Starts a dictation and records what it reports: a transcript, or "error" behind one.
  void begin() {
    request_ = speech_.makeAudioBufferRecognitionRequest();
    request_->setShouldReportPartialResults(true);
    task_ = speech_.makeRecognizer("vi_VN")->recognitionTask(
        request_, [this](const auto& result, const auto& error) {
          reports_.push_back((result ? result->formattedString : "-") + (error ? " error" : ""));
        });
    desktop_.speech().answerNow(simulated::RecognitionStep::partial({}, "mật khẩu"));
  }

  std::size_t notes() { return desktop_.notifications().posted().size(); }

  simulated::SimulatedDesktop desktop_;
  FakeGuard guard_;
  GuardedSpeech speech_{desktop_.speech(), guard_, platform::current().mainQueue,
                        platform::current().keyboardEvents, platform::current().userNotifications};
  std::shared_ptr<SpeechAudioBufferRecognitionRequest> request_;
  std::shared_ptr<SpeechRecognitionTask> task_;
  std::vector<std::string> reports_;
};

TEST_F(GuardedSpeechTest, PermissionIsNeverAnsweredWhileThereIsASecret) {
  EXPECT_EQ(authorization(), SpeechAuthorizationStatus::authorized);
  EXPECT_EQ(notes(), 0U);
  for (const Secret each : {Secret::passwordField, Secret::setUp, Secret::lockedSession}) {
    guard_.secret = each;
    EXPECT_FALSE(authorization());
  }
  ASSERT_EQ(notes(), 2U);
  EXPECT_NE(desktop_.notifications().posted()[0].body, desktop_.notifications().posted()[1].body);
  guard_.secret = Secret::none;
  desktop_.speech().setAuthorization(SpeechAuthorizationStatus::denied);
  EXPECT_EQ(authorization(), SpeechAuthorizationStatus::denied);
}

TEST_F(GuardedSpeechTest, NoNotificationComesWhileTheHoldKeyIsDown) {
  guard_.secret = Secret::passwordField;
  desktop_.keyboard().press(simulated::Key::function);
  EXPECT_FALSE(authorization());
  EXPECT_EQ(notes(), 0U);
  desktop_.keyboard().release(simulated::Key::function);
  EXPECT_FALSE(authorization());
  EXPECT_EQ(notes(), 1U);
}

TEST_F(GuardedSpeechTest, SecretThatComesLaterReplacesWhatWasHeardByAnErrorOnce) {
  begin();
  guard_.secret = Secret::setUp;
  desktop_.advance(Seconds{2});
  EXPECT_EQ(reports_, std::vector<std::string>{"mật khẩu"});
  guard_.secret = Secret::lockedSession;
  desktop_.advance(Seconds{2});
  EXPECT_EQ(reports_, (std::vector<std::string>{"mật khẩu", " error"}));
  EXPECT_FALSE(desktop_.speech().answerNow(simulated::RecognitionStep::partial({}, "muộn")))
      << "the recognition was not cancelled";
  EXPECT_EQ(notes(), 1U);
}

TEST_F(GuardedSpeechTest, LateAnswerAboutAnEndedDictationChangesNothing) {
  guard_.answersLate = true;
  begin();
  task_->cancel();
  task_.reset();
  reports_.clear();
  ASSERT_EQ(guard_.waiting.size(), 1U);
  guard_.waiting[0](Secret::passwordField);
  desktop_.advance(Seconds{2});
  EXPECT_TRUE(reports_.empty());
  EXPECT_EQ(notes(), 0U);
  EXPECT_EQ(guard_.waiting.size(), 1U) << "the guard is asked after the end";
}

}  // namespace
}  // namespace tavelo::platform
