#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/Platform.h"
#include "platform/SwitchingSpeech.h"
#include "platform/simulated/SimulatedDesktop.h"

namespace tavelo::platform {
namespace {

/// The simulated recogniser under a name. Records its name with what it is asked, and its end.
class NamedSpeech final : public Speech {
 public:
  NamedSpeech(Speech& speech, std::string name, std::vector<std::string>& log)
      : speech_(speech), name_(std::move(name)), log_(log) {}
  ~NamedSpeech() override { log_.push_back(name_ + " ends"); }

  std::shared_ptr<SpeechRecognizer> makeRecognizer(const std::string& localeIdentifier) override {
    log_.push_back(name_);
    return speech_.makeRecognizer(localeIdentifier);
  }
  std::shared_ptr<SpeechAudioBufferRecognitionRequest> makeAudioBufferRecognitionRequest() override {
    return speech_.makeAudioBufferRecognitionRequest();
  }
  void requestAuthorization(std::function<void(SpeechAuthorizationStatus)> handler) override {
    log_.push_back(name_ + " is asked");
    speech_.requestAuthorization(std::move(handler));
  }

 private:
  Speech& speech_;
  const std::string name_;
  std::vector<std::string>& log_;
};

class SwitchingSpeechTest : public testing::Test {
 protected:
  std::unique_ptr<Speech> named(const char* name) {
    return std::make_unique<NamedSpeech>(desktop_.speech(), name, log_);
  }
  std::shared_ptr<SpeechRecognitionTask> begin() {
    request_ = tested_.makeAudioBufferRecognitionRequest();
    request_->setShouldReportPartialResults(true);
    return tested_.makeRecognizer("vi_VN")->recognitionTask(
        request_, [this](const auto& result, const auto&) {
          if (result) log_.push_back("hears " + result->formattedString);
        });
  }
  void pass() { desktop_.advance(SwitchingSpeech::interval + Seconds{1}); }
  std::vector<std::string> said() { return std::exchange(log_, {}); }
  using Said = std::vector<std::string>;

  std::vector<std::string> log_;
  simulated::SimulatedDesktop desktop_;
  SwitchingSpeech tested_{current().mainQueue, named("first")};
  std::shared_ptr<SpeechAudioBufferRecognitionRequest> request_;
};

TEST_F(SwitchingSpeechTest, RunningDictationKeepsItsBackendAndTheNextHasTheNewOne) {
  const auto task = begin();
  tested_.use(named("second"));
  pass();
  desktop_.speech().answerNow(simulated::RecognitionStep::partial({}, "một"));
  pass();
  EXPECT_EQ(said(), (Said{"first", "hears một"}));
  task->cancel();
  const auto next = begin();
  EXPECT_EQ(said(), Said{"second"});
  pass();
  EXPECT_EQ(said(), Said{"first ends"});
}

TEST_F(SwitchingSpeechTest, DroppedTaskGoesOnAndUnusedBackendsEndTogether) {
  begin();
  tested_.use(named("second"));
  tested_.use(named("third"));
  pass();
  EXPECT_EQ(said(), (Said{"first", "second ends"}));
  desktop_.speech().answerNow(simulated::RecognitionStep::finalResult({}, "hai"));
  pass();
  EXPECT_EQ(said(), (Said{"hears hai", "first ends"}));
}

TEST_F(SwitchingSpeechTest, PermissionIsAskedOnTheMainThreadWhereverTheQuestionComesFrom) {
  std::thread([this] { tested_.requestAuthorization([](auto) {}); }).join();
  EXPECT_TRUE(said().empty());
  tested_.use(named("second"));
  desktop_.advance(Seconds{0.1});
  EXPECT_EQ(said(), Said{"second is asked"});
}

}  // namespace
}  // namespace tavelo::platform
