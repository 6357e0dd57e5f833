#include <chrono>
#include <memory>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/BufferedRecognitionRequest.h"
#include "platform/recognizer/VoskSpeech.h"
#include "tests/platform/recognizer/FakeModel.h"
#include "tests/platform/recognizer/PumpedMainQueue.h"
#include "tests/platform/recognizer/ReportedDictation.h"

namespace tavelo::recognizer {
namespace {

using platform::AudioBuffer;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// The main thread waits 250 ms at most; the rest is for a machine that is busy with other tests.
constexpr std::chrono::milliseconds answerLimit{1000};

/// A buffer of 16 kHz mono sound; the number shows in the library's calls.
AudioBuffer sound(std::int16_t number) { return {{16000, 1}, {number, 0, 0, 0}}; }

struct Dictation : ReportedDictation {
  using ReportedDictation::ReportedDictation;

  void append(int buffers) const {
    for (int i = 1; i <= buffers; ++i) request->append(sound(static_cast<std::int16_t>(i)));
  }
};

class VoskSpeechTest : public testing::Test {
 protected:
  std::unique_ptr<VoskSpeech> makeSpeech(const FakeModel& model) {
    return std::make_unique<VoskSpeech>(mainQueue, model.configuration());
  }

  /// Runs a dictation of `buffers` buffers to its end.
  std::vector<std::string> reportsOf(VoskSpeech& speech, int buffers, bool partialResults = true) {
    const Dictation dictation{speech, partialResults};
    dictation.append(buffers);
    dictation.request->endAudio();
    EXPECT_TRUE(mainQueue.pumpUntil([&] { return dictation.over(); }));
    mainQueue.drain();
    return *dictation.reports;
  }

  PumpedMainQueue mainQueue;
};

constexpr const char* twoUtterances = R"(0 {"text": ""}
0 {"partial": "anh phú"}
0 {"partial": "anh phú"}
0 {"partial": "anh"}
1 {"text": "anh phú"}
0 {"text": ""}
0 {"partial": "ăn"}
1 {"text": ""}
0 {"partial": "chưa"}
final {"text": "chưa ạ"}
)";

TEST_F(VoskSpeechTest, FinishedUtterancesAndTheRunningOneMakeTheTranscript) {
  const FakeModel model{twoUtterances};
  const auto speech = makeSpeech(model);
  EXPECT_THAT(reportsOf(*speech, 9), ElementsAre("anh phú", "anh", "anh phú", "anh phú ăn", "anh phú",
                                                 "anh phú chưa", "[anh phú chưa ạ]"));
  EXPECT_THAT(reportsOf(*speech, 9, /*partialResults=*/false), ElementsAre("[anh phú chưa ạ]"));
  EXPECT_THAT(reportsOf(*speech, 0), ElementsAre("[]"));
  EXPECT_EQ(model.calls().find("load", 1), std::string::npos) << "the model is loaded once";
}

TEST_F(VoskSpeechTest, SoundFromBeforeTheModelIsLoadedIsDecodedBufferByBuffer) {
  const FakeModel model{"load gate\n0 {\"partial\": \"a\"}\n"};
  const auto speech = makeSpeech(model);
  speech->preload("vi_VN");
  ASSERT_TRUE(model.waitAtGate());
  const auto asked = std::chrono::steady_clock::now();
  EXPECT_TRUE(speech->makeRecognizer("vi_VN")->isAvailable()) << "as long as nothing speaks against it";
  EXPECT_LT(std::chrono::steady_clock::now() - asked, answerLimit);

  const Dictation dictation{*speech};
  dictation.append(3);
  model.openGate();
  dictation.append(1);
  dictation.request->endAudio();
  ASSERT_TRUE(mainQueue.pumpUntil([&] { return dictation.over(); }));
  EXPECT_EQ(model.calls(),
            "load\nrecognizer 16000\naccept 8 bytes from 1\naccept 8 bytes from 2\n"
            "accept 8 bytes from 3\naccept 8 bytes from 1\nfinal\n");
}

TEST_F(VoskSpeechTest, ChannelsAreMixedDownAndANewRateGetsANewRecognizer) {
  const FakeModel model{"0 {\"partial\": \"a\"}\nfinal {\"text\": \"anh\"}\n"};
  const auto speech = makeSpeech(model);
  const Dictation dictation{*speech};
  dictation.request->append({{44100, 2}, {32767, 32767, -3, -5, 7}});
  dictation.request->append({{44100, 1}, {-32768}});
  dictation.request->append({{16000, 3}, {}});
  dictation.request->endAudio();
  ASSERT_TRUE(mainQueue.pumpUntil([&] { return dictation.over(); }));
  EXPECT_THAT(*dictation.reports, ElementsAre("a", "", "anh a", "[anh anh]"));
  EXPECT_EQ(model.calls(),
            "load\nrecognizer 44100\naccept 4 bytes from 32767\naccept 2 bytes from -32768\nfinal\n"
            "recognizer 16000\naccept 0 bytes from 0\nfinal\n");
}

TEST_F(VoskSpeechTest, SoundWithoutAFormatIsAnError) {
  const FakeModel model{"0 {\"partial\": \"a\"}\n"};
  const auto speech = makeSpeech(model);
  for (const platform::AudioFormat format : {platform::AudioFormat{0, 1}, platform::AudioFormat{16000, 0}}) {
    const Dictation dictation{*speech};
    dictation.request->append({format, {1, 2}});
    EXPECT_TRUE(mainQueue.pumpUntil([&] { return dictation.over(); }));
    EXPECT_THAT(*dictation.reports, ElementsAre("error"));
  }
}

struct Failure {
  const char* name;
  std::string script;
};

void PrintTo(const Failure& failure, std::ostream* stream) { *stream << failure.name; }

class VoskSpeechFailure : public VoskSpeechTest, public testing::WithParamInterface<Failure> {};

TEST_P(VoskSpeechFailure, IsReportedOnceAndNothingAfterIt) {
  const FakeModel model{GetParam().script +
                        "\n0 {\"partial\": \"too late\"}\nfinal {\"text\": \"too late\"}\n"};
  const auto speech = makeSpeech(model);
  auto reports = reportsOf(*speech, 3);
  ASSERT_FALSE(reports.empty());
  EXPECT_EQ(reports.back(), "error");
  reports.pop_back();
  EXPECT_THAT(reports, Not(testing::Contains("error")));
  EXPECT_THAT(reports, Not(testing::Contains(HasSubstr("too late"))));

  model.rewrite("final {\"text\": \"\"}\n0 {\"partial\": \"a\"}\n");
  EXPECT_THAT(reportsOf(*speech, 1), ElementsAre("a", "[]"));
}

INSTANTIATE_TEST_SUITE_P(Of, VoskSpeechFailure,
                         testing::ValuesIn(std::vector<Failure>{
                             {"SoundAtOnce", "-1"},
                             {"SoundInMidWord", "0 {\"partial\": \"a\"}\n-1"},
                             {"Recognizer", "recognizer fail"},
                             {"NoAnswer", "0 "},
                             {"NoJson", "0 {"},
                             {"NoUtf8", "0 {\"partial\": \"\xC3\x28\"}"},
                             {"Array", "0 [{\"partial\": \"a\"}]"},
                             {"NoMember", "0 {}"},
                             {"NoString", "0 {\"partial\": 1}"},
                             {"UtteranceWithoutText", "1 {\"partial\": \"a\"}"},
                         }),
                         [](const auto& failure) { return std::string{failure.param.name}; });

TEST_F(VoskSpeechTest, ABadAnswerToTheEndIsAnErrorInItsPlace) {
  const FakeModel model{"0 {\"partial\": \"anh\"}\nfinal {\"txet\": \"anh\"}\n"};
  EXPECT_THAT(reportsOf(*makeSpeech(model), 1), ElementsAre("anh", "error"));
}

TEST_F(VoskSpeechTest, CancelWaitsForNoDecodeAndTheNextDictationRuns) {
  const FakeModel model{"gate 0 {\"partial\": \"anh\"}\nfinal {\"text\": \"anh\"}\n"};
  const auto speech = makeSpeech(model);
  const Dictation first{*speech};
  first.append(3);
  first.request->endAudio();
  ASSERT_TRUE(model.waitAtGate());
  first.task->cancel();

  model.rewrite("0 {\"partial\": \"phú\"}\nfinal {\"text\": \"phú\"}\n");
  const Dictation second{*speech};
  second.append(1);
  second.request->endAudio();
  model.openGate();
  ASSERT_TRUE(mainQueue.pumpUntil([&] { return second.over(); }));
  EXPECT_THAT(*second.reports, ElementsAre("phú", "[phú]"));
  EXPECT_THAT(*first.reports, IsEmpty());
  EXPECT_EQ(
      model.calls(),
      "load\nrecognizer 16000\naccept 8 bytes from 1\nrecognizer 16000\naccept 8 bytes from 1\nfinal\n");
}

TEST_F(VoskSpeechTest, AResultOnItsWayIsDroppedByACancelInTheHandler) {
  const FakeModel model{"0 {\"partial\": \"a\"}\n0 {\"partial\": \"b\"}\n0 {\"partial\": \"c\"}\n"};
  const auto speech = makeSpeech(model);
  const auto request = speech->makeAudioBufferRecognitionRequest();
  request->setShouldReportPartialResults(true);
  std::vector<std::string> heard;
  std::shared_ptr<platform::SpeechRecognitionTask> task;
  task = speech->makeRecognizer("vi_VN")->recognitionTask(request, [&](const auto& result, const auto&) {
    heard.push_back(result->formattedString);
    task->cancel();
    task.reset();
  });
  for (std::int16_t i = 1; i <= 3; ++i) request->append(sound(i));
  ASSERT_TRUE(mainQueue.pumpUntil([&] { return !heard.empty(); }));
  EXPECT_EQ(reportsOf(*speech, 1).size(), 2U) << "the engine is free for the next";
  EXPECT_THAT(heard, ElementsAre("a"));
}

TEST_F(VoskSpeechTest, TheEndWaitsForTheRunningDecodeAndReportsNothing) {
  const FakeModel model{
      "0 {\"partial\": \"anh\"}\ngate 0 {\"partial\": \"anh phú\"}\nfinal {\"text\": \"anh\"}\n"};
  auto speech = makeSpeech(model);
  const auto recognizer = speech->makeRecognizer("vi_VN");
  // The gate opens once the end has taken the handler away, while it waits for the decode.
  const Dictation dictation{*speech, true, std::shared_ptr<void>{nullptr, [&](void*) { model.openGate(); }}};
  dictation.append(5);
  dictation.request->endAudio();
  ASSERT_TRUE(model.waitAtGate());
  bool answered = false;
  speech->requestAuthorization([&](auto) { answered = true; });
  speech.reset();
  EXPECT_GE(mainQueue.drain(), 1U) << "a result was on its way";
  EXPECT_THAT(*dictation.reports, IsEmpty());
  EXPECT_FALSE(answered);
  EXPECT_THAT(model.calls(), testing::EndsWith("accept 8 bytes from 2\nunload\n"));

  // What outlives it does no harm.
  dictation.append(1);
  dictation.task->cancel();
  recognizer->recognitionTask(dictation.request, [](const auto&, const auto&) { FAIL(); });
  EXPECT_EQ(mainQueue.drain(), 0U);
}

TEST_F(VoskSpeechTest, AFinalResultThatWasNotDeliveredEndsWithTheSpeech) {
  const FakeModel model{"final {\"text\": \"anh\"}\n"};
  auto speech = makeSpeech(model);
  const Dictation dictation{*speech};
  dictation.request->append(sound(1));
  dictation.request->endAudio();
  ASSERT_TRUE(mainQueue.waitForPost());
  speech.reset();
  EXPECT_EQ(mainQueue.drain(), 1U);
  EXPECT_THAT(*dictation.reports, IsEmpty());
}

TEST_F(VoskSpeechTest, WithoutAModelFolderThereIsNoRecognizer) {
  const FakeModel model{""};
  const auto speech = makeSpeech(model);
  EXPECT_EQ(speech->makeRecognizer("en_US"), nullptr);
  EXPECT_EQ(speech->makeRecognizer("../models/vi_VN"), nullptr);
  EXPECT_NE(speech->makeRecognizer("vi_VN"), nullptr);
}

TEST_F(VoskSpeechTest, WhatCannotBeLoadedIsNotAvailableAndSaysWhy) {
  const auto failureOf = [this](const VoskConfiguration& configuration) {
    VoskSpeech speech{mainQueue, configuration};
    const auto recognizer = speech.makeRecognizer("vi_VN");
    const auto asked = std::chrono::steady_clock::now();
    EXPECT_FALSE(recognizer->isAvailable());
    EXPECT_LT(std::chrono::steady_clock::now() - asked, answerLimit);
    return speech.failure("vi_VN");
  };
  const FakeModel refused{"load fail\n"};
  EXPECT_THAT(failureOf(refused.configuration()), HasSubstr("cannot load the model"));
  EXPECT_THAT(failureOf(refused.configuration("/nowhere/libvosk.so")), HasSubstr("/nowhere/libvosk.so"));
  EXPECT_THAT(failureOf(refused.configuration("libdl.so.2")), HasSubstr("vosk_set_log_level"));
  const TemporaryFolder home;
  std::filesystem::create_directories(home.path() / "Tavelo/models/vi_VN");
  EXPECT_THAT(failureOf(VoskConfiguration{home.path(), [](auto) { return std::nullopt; }}),
              HasSubstr("empty"));
}

TEST_F(VoskSpeechTest, ADictationBegunWhileABrokenModelLoadsEndsInAnErrorAndTheNextTryLoadsAgain) {
  const FakeModel model{"load gate\nload fail\n"};
  const auto speech = makeSpeech(model);
  const Dictation dictation{*speech};
  dictation.append(1);
  ASSERT_TRUE(model.waitAtGate());
  model.openGate();
  ASSERT_TRUE(mainQueue.pumpUntil([&] { return dictation.over(); }));
  EXPECT_THAT(*dictation.reports, ElementsAre("error"));

  model.rewrite("final {\"text\": \"anh\"}\n");
  while (!speech->makeRecognizer("vi_VN")->isAvailable()) std::this_thread::yield();
  EXPECT_THAT(reportsOf(*speech, 1), ElementsAre("[anh]"));
}

TEST_F(VoskSpeechTest, AForeignRequestIsAnError) {
  class ForeignRequest final : public platform::SpeechAudioBufferRecognitionRequest {
    void setShouldReportPartialResults(bool) override {}
    void append(const AudioBuffer&) override {}
    void endAudio() override {}
  };
  const FakeModel model{""};
  const auto speech = makeSpeech(model);
  int errors = 0;
  const auto task = speech->makeRecognizer("vi_VN")->recognitionTask(
      std::make_shared<ForeignRequest>(), [&](const auto&, const auto& error) { errors += error ? 1 : 0; });
  EXPECT_TRUE(mainQueue.pumpUntil([&] { return errors == 1; }));
}

TEST_F(VoskSpeechTest, AuthorizationIsGivenLater) {
  const FakeModel model{""};
  const auto speech = makeSpeech(model);
  std::vector<platform::SpeechAuthorizationStatus> answers;
  speech->requestAuthorization([&](auto status) { answers.push_back(status); });
  EXPECT_THAT(answers, IsEmpty());
  mainQueue.drain();
  EXPECT_THAT(answers, ElementsAre(platform::SpeechAuthorizationStatus::authorized));
}

TEST_F(VoskSpeechTest, SoundFromACaptureThreadComesInOrder) {
  std::string script;
  for (int i = 1; i <= 200; ++i) script += R"(0 {"partial": ")" + std::to_string(i) + "\"}\n";
  const FakeModel model{script};
  const auto speech = makeSpeech(model);
  const Dictation dictation{*speech};
  std::thread capture{[&] {
    dictation.append(200);
    dictation.request->endAudio();
  }};
  EXPECT_TRUE(mainQueue.pumpUntil([&] { return dictation.over(); }));
  capture.join();
  ASSERT_EQ(dictation.reports->size(), 201U);
  for (std::size_t i = 0; i < 200; ++i) EXPECT_EQ(dictation.reports->at(i), std::to_string(i + 1));
}

}  // namespace
}  // namespace tavelo::recognizer
