#include <chrono>
#include <csignal>
#include <iterator>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/recognizer/ProcessReply.h"
#include "platform/recognizer/ProcessSpeech.h"
#include "tests/platform/recognizer/CountedNotifications.h"
#include "tests/platform/recognizer/PumpedMainQueue.h"
#include "tests/platform/recognizer/ReportedDictation.h"
#include "tests/platform/recognizer/TemporaryFolder.h"

namespace tavelo::recognizer {
namespace {

using testing::HasSubstr;

constexpr std::chrono::seconds patience{20};

/// Recognition by the scripted process; see ScriptedRecognizer.cpp.
class ProcessSpeechTest : public testing::Test {
 protected:
  ProcessSpeechTest() { speech_->notifyThrough(notifications_); }

  /// Says the words 1 to 6, with the end of a segment after 3, and waits for the last report.
  std::string dictate() {
    const ReportedDictation dictation{*speech_};
    for (const int word : {1, 2, 3, -1, 4, 5, 6})
      dictation.request->append({{16000, 1}, {static_cast<std::int16_t>(word), 0, 0, 0}});
    return dictation.finish(queue_).back();
  }
  void fault(const std::string& fault) const { folder_.write("fault", fault); }
  std::vector<pid_t> starts() const {
    std::istringstream lines{folder_.read("starts")};
    return {std::istream_iterator<pid_t>{lines}, {}};
  }
  static bool isGone(pid_t process) { return kill(process, 0) != 0; }

  TemporaryFolder folder_;
  CountedNotifications notifications_;
  PumpedMainQueue queue_;
  std::unique_ptr<ProcessSpeech> speech_ = std::make_unique<ProcessSpeech>(
      queue_, TAVELO_SCRIPTED_RECOGNIZER,
      ModelConfiguration{std::nullopt, [this](const std::string& name) {
                           return name == "TAVELO_MODEL" ? folder_.path().string() : "";
                         }});
};

TEST_F(ProcessSpeechTest, OneProcessServesDictationsUntilTenIdleMinutesAndTheNextWarmsAnother) {
  speech_->preload("vi_VN");
  EXPECT_EQ(dictate(), "[1 2 3 4 5 6]");
  queue_.advance(ProcessSpeech::idleLimit - platform::Seconds{1});
  EXPECT_EQ(dictate(), "[1 2 3 4 5 6]");
  queue_.advance(ProcessSpeech::idleLimit - platform::Seconds{1});
  ASSERT_EQ(starts().size(), 1U);
  EXPECT_FALSE(isGone(starts()[0]));
  queue_.advance(platform::Seconds{2});
  while (!isGone(starts()[0])) std::this_thread::yield();
  EXPECT_EQ(dictate(), "[1 2 3 4 5 6]");
  EXPECT_EQ(starts().size(), 2U);
  speech_.reset();
  EXPECT_TRUE(isGone(starts()[1]));
}

struct Fault {
  const char* kind;
  int times;
  const char* last;
};
void PrintTo(const Fault& fault, std::ostream* stream) { *stream << fault.kind << fault.times; }
class ProcessFault : public ProcessSpeechTest, public testing::WithParamInterface<Fault> {};

TEST_P(ProcessFault, LosesAndDoublesNoWordOrIsOneError) {
  fault("5 " + std::string{GetParam().kind} + " " + std::to_string(GetParam().times));
  EXPECT_EQ(dictate(), GetParam().last);
  const bool failed = GetParam().times > 3;
  EXPECT_EQ(notifications_.posted, failed ? 1 : 0);
  EXPECT_EQ(starts().size(), failed ? 4U : 1U + static_cast<unsigned>(GetParam().times));
  if (failed) fault("");
  EXPECT_EQ(dictate(), "[1 2 3 4 5 6]");
}

INSTANTIATE_TEST_SUITE_P(Of, ProcessFault,
                         testing::Values(Fault{"exit", 1, "[1 2 3 4 5 6]"}, Fault{"exit", 3, "[1 2 3 4 5 6]"},
                                         Fault{"exit", 99, "error"}, Fault{"rubbish", 1, "[1 2 3 4 5 6]"},
                                         Fault{"half", 1, "[1 2 3 4 5 6]"},
                                         Fault{"flood", 1, "[1 2 3 4 5 6]"},
                                         Fault{"endless", 1, "[1 2 3 4 5 6]"},
                                         Fault{"stop", 1, "[1 2 3 4 5 6]"}),
                         testing::PrintToStringParamName());

TEST_F(ProcessSpeechTest, AModelThatFailsTwiceIsToldOnceWithItsReason) {
  fault("0 fail 2");
  EXPECT_EQ(dictate(), "error");
  EXPECT_EQ(notifications_.posted, 1);
  EXPECT_EQ(starts().size(), 2U);
  // The next attempt may succeed, and so may the second load of one attempt.
  EXPECT_EQ(dictate(), "[1 2 3 4 5 6]");
  speech_.reset();
}

TEST_F(ProcessSpeechTest, AFailureHasTheReasonAndTheEndOfTheLog) {
  fault("0 fail 9");
  EXPECT_EQ(speech_->failure("vi_VN", patience), "bad tokens; its log ends with: about to fail");
  fault("0 exit 99");
  EXPECT_THAT(speech_->failure("vi_VN", patience), HasSubstr("log ends with: about to exit"));
}

TEST_F(ProcessSpeechTest, AReleaseBeforeTheModelIsLoadedIsToldAndNothingIsLeftOver) {
  fault("0 hang 1");
  const ReportedDictation dictation{*speech_};
  dictation.request->append({{16000, 1}, {1}});
  dictation.request->endAudio();
  dictation.task->cancel();
  EXPECT_EQ(notifications_.posted, 1);
  speech_.reset();
  for (const auto process : starts()) EXPECT_TRUE(isGone(process));
}

TEST_F(ProcessSpeechTest, AMissingProgramIsAFailure) {
  ProcessSpeech speech{queue_, "/nowhere/recognizer", ModelConfiguration{std::nullopt, [this](const auto&) {
                                                                           return folder_.path().string();
                                                                         }}};
  EXPECT_THAT(speech.failure("vi_VN", patience), HasSubstr("/nowhere/recognizer: No such file"));
  EXPECT_FALSE(speech.makeRecognizer("vi_VN")->isAvailable());
}

TEST(ProcessReply, WhatIsNoReplyIsRefused) {
  for (const char* line :
       {"", "{", "[]", "null", "{\"dictation\":4294967296}", "{\"dictation\":1,\"closed\":\"\"}",
        "{\"dictation\":1,\"closed\":\"\",\"until\":-1}", "{\"dictation\":1,\"text\":\"\xC3\x28\"}"})
    EXPECT_FALSE(ProcessReply::parse(line)) << line;
  EXPECT_EQ(ProcessReply::parse("{\"news\":1}")->kind, ProcessReply::Kind::other);
}

}  // namespace
}  // namespace tavelo::recognizer
