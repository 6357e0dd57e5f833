#include <atomic>
#include <chrono>
#include <csignal>
#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/recognizer/ProcessEngine.h"
#include "platform/recognizer/ProcessReply.h"
#include "tests/platform/recognizer/ProcessSpeechFixture.h"

namespace tavelo::recognizer {
namespace {

using testing::HasSubstr;

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
  EXPECT_THAT(notifications_.last, failed ? HasSubstr("dừng đột ngột. Phần cuối") : HasSubstr(""));
  EXPECT_THAT(log_.latest(), HasSubstr("log ends with: about to " + std::string{GetParam().kind}));
  EXPECT_EQ(starts().size(), failed ? 4U : 1U + static_cast<unsigned>(GetParam().times));
  if (failed) fault("");
  EXPECT_EQ(dictate(), "[1 2 3 4 5 6]");
}

INSTANTIATE_TEST_SUITE_P(Of, ProcessFault,
                         testing::Values(Fault{"exit", 1, "[1 2 3 4 5 6]"}, Fault{"exit", 3, "[1 2 3 4 5 6]"},
                                         Fault{"exit", 99, "error"}, Fault{"rubbish", 1, "[1 2 3 4 5 6]"},
                                         Fault{"half", 1, "[1 2 3 4 5 6]"}, Fault{"far", 1, "[1 2 3 4 5 6]"},
                                         Fault{"flood", 1, "[1 2 3 4 5 6]"},
                                         Fault{"endless", 1, "[1 2 3 4 5 6]"}),
                         testing::PrintToStringParamName());

TEST_F(ProcessSpeechTest, AModelThatFailedBeforeTheDictationHasTheSameReason) {
  fault("0 fail 2");
  const auto recognizer = speech_->makeRecognizer("vi_VN");
  while (recognizer->isAvailable()) std::this_thread::yield();
  const auto request = speech_->makeAudioBufferRecognitionRequest();
  const auto task = recognizer->recognitionTask(request, [](const auto&, const auto&) {});
  queue_.drain();
  EXPECT_THAT(notifications_.last, HasSubstr("Không nạp được mô hình"));
}

TEST_F(ProcessSpeechTest, AModelThatFailsTwiceIsToldOnceWithItsReason) {
  fault("0 fail 2");
  EXPECT_EQ(dictate(), "error");
  EXPECT_EQ(notifications_.posted, 1);
  EXPECT_THAT(notifications_.last, HasSubstr("Không nạp được mô hình"));
  EXPECT_EQ(starts().size(), 2U);
  // The next attempt may succeed, and so may the second load of one attempt.
  EXPECT_EQ(dictate(), "[1 2 3 4 5 6]");
  speech_.reset();
}

TEST_F(ProcessSpeechTest, AFailureHasTheReasonAndTheEndOfTheLogAndASuccessTheEngine) {
  EXPECT_EQ(speech_->failure("vi_VN", patience), "");
  EXPECT_EQ(speech_->engine("vi_VN"), "scripted 2.0");
  EXPECT_EQ(log_.latest(), "");
  speech_->makeRecognizer("vi_VN");
  queue_.advance(ProcessSpeech::idleLimit + platform::Seconds{1});
  while (!isGone(starts()[0])) std::this_thread::yield();
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

TEST_F(ProcessSpeechTest, AProcessThatDoesNotEvenSayThatItLoadsIsReplacedSooner) {
  std::atomic<int> seconds = 1000;
  const auto engine = std::make_shared<ProcessEngine>(
      RecognizerCommand{TAVELO_SCRIPTED_RECOGNIZER, {"--model", folder_.path().string()}}, log_,
      [&] { return ProcessEngine::Clock::time_point{std::chrono::seconds{seconds}}; });
  fault("-2 hang 1");
  const auto outcome = engine->warm();
  while (starts().empty()) std::this_thread::yield();
  seconds += 40;
  EXPECT_EQ(outcome->wait(patience), Outcome::State::succeeded);
  engine->stop();
}

TEST_F(ProcessSpeechTest, AMissingProgramIsAFailure) {
  const ModelConfiguration configuration{std::nullopt,
                                         [this](const auto&) { return folder_.path().string(); }};
  ProcessSpeech speech{queue_, "/nowhere/recognizer", configuration, RecognizerLog{std::nullopt}};
  EXPECT_THAT(speech.failure("vi_VN", patience), HasSubstr("/nowhere/recognizer: No such file"));
  EXPECT_FALSE(speech.makeRecognizer("vi_VN")->isAvailable());
  speech.notifyThrough(notifications_);
  EXPECT_EQ(ReportedDictation{speech}.finish(queue_).back(), "error");
  EXPECT_THAT(notifications_.last, HasSubstr("Hãy cài lại Tavelo"));
}

TEST_F(ProcessSpeechTest, ASegmentLongerThanTheKeptSoundIsHeardOnceAlsoByTheNextProcess) {
  for (const char* faults : {"", "5 exit 1"}) {
    fault(faults);
    const ReportedDictation dictation{*speech_};
    dictation.request->append({{16000, 1}, {1}});
    ASSERT_TRUE(queue_.pumpUntil([&] { return !dictation.reports->empty(); }));
    // The request holds no more than a minute that nobody has taken.
    for (std::int16_t word = 2; word <= 5; ++word) {
      for (int i = 0; i < 40; ++i) dictation.request->append({{16000, 1}, std::vector<std::int16_t>(16000)});
      dictation.request->append({{16000, 1}, {word}});
      const auto said = [&] { return dictation.reports->back().back() == '0' + word; };
      EXPECT_TRUE(word == 5 || queue_.pumpUntil(said));
    }
    dictation.request->append({{16000, 1}, {-1}});
    EXPECT_EQ(dictation.finish(queue_).back(), "[1 2 3 4 5]");
  }
}

TEST_F(ProcessSpeechTest, EachSegmentMayLoseThreeProcesses) {
  fault("2 exit 3\n5 exit 3");
  EXPECT_EQ(dictate(), "[1 2 3 4 5 6]");
  EXPECT_EQ(starts().size(), 7U);
}

class HungProcess : public ProcessSpeechTest, public testing::WithParamInterface<const char*> {};

TEST_P(HungProcess, IsReplaced) {
  // Once `mayPass` is raised, a second passes each time the engine looks at the clock. Forty are enough for
  // the silence, and too few for the loading of the next process.
  std::atomic<int> seconds = 0;
  std::atomic<int> mayPass = 0;
  const auto engine = std::make_shared<ProcessEngine>(
      RecognizerCommand{TAVELO_SCRIPTED_RECOGNIZER, {"--model", folder_.path().string()}}, log_, [&] {
        if (seconds < mayPass) ++seconds;
        return ProcessEngine::Clock::time_point{std::chrono::seconds{1000 + seconds}};
      });
  fault("5 " + std::string{GetParam()} + " 1");
  std::string heard;
  const auto task = std::make_shared<RecognitionTask>(queue_, true, [&](const auto& result, const auto&) {
    heard = result ? result->formattedString : "error";
  });
  const auto request = std::make_shared<platform::BufferedRecognitionRequest>();
  engine->warm();
  engine->recognize(task, request);
  for (std::int16_t word = 1; word <= 5; ++word) request->append({{16000, 1}, {word}});
  ASSERT_TRUE(queue_.pumpUntil([&] { return heard == "1 2 3 4"; }));
  if (GetParam() == std::string{"stop"}) stopped();
  // Nothing is due before the end of the sound; then it is.
  seconds += 1000;
  engine->wake();
  std::thread{[&] { request->endAudio(); }}.join();
  mayPass = seconds + 40;
  while (starts().size() < 2) {
    engine->wake();
    std::this_thread::yield();
  }
  ASSERT_TRUE(queue_.pumpUntil([&] { return task->isOver(); }));
  EXPECT_EQ(heard, "1 2 3 4 5");
  engine->stop();
}

INSTANTIATE_TEST_SUITE_P(That, HungProcess, testing::Values("stop", "hang"),
                         [](const auto& kind) { return std::string{kind.param}; });

TEST(ProcessReply, WhatIsNoReplyIsRefused) {
  for (const char* line :
       {"", "{", "[]", "null", "{\"dictation\":4294967296}", "{\"dictation\":1,\"closed\":\"\"}",
        "{\"dictation\":1,\"closed\":\"\",\"until\":-1}", "{\"dictation\":1,\"text\":\"\xC3\x28\"}"})
    EXPECT_FALSE(ProcessReply::parse(line)) << line;
  EXPECT_EQ(ProcessReply::parse("{\"news\":1}")->kind, ProcessReply::Kind::other);
}

}  // namespace
}  // namespace tavelo::recognizer
