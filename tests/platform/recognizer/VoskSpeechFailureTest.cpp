#include <filesystem>
#include <memory>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

#include "tests/platform/recognizer/VoskSpeechTest.h"

namespace tavelo::recognizer {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

TEST_F(VoskSpeechTest, SoundWithoutAFormatIsAnError) {
  const FakeModel model{"0 {\"partial\": \"a\"}\n"};
  const auto speech = makeSpeech(model);
  for (const platform::AudioFormat format : {platform::AudioFormat{0, 1}, platform::AudioFormat{16000, 0}}) {
    const NumberedDictation dictation{*speech};
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
  EXPECT_EQ(reportsOf(*speech, 1).back(), "[]");
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

TEST_F(VoskSpeechTest, ABadFinalAnswerIsReportedAsAnError) {
  const FakeModel model{"0 {\"partial\": \"anh\"}\nfinal {\"txet\": \"anh\"}\n"};
  EXPECT_THAT(reportsOf(*makeSpeech(model), 1), ElementsAre("anh", "error"));
}

TEST_F(VoskSpeechTest, AFailedLoadIsNotAvailableAndSaysWhy) {
  const auto failureOf = [this](const VoskConfiguration& configuration) {
    VoskSpeech speech{mainQueue, configuration};
    EXPECT_FALSE(isAvailable(speech));
    return speech.failure("vi_VN", std::chrono::seconds{20});
  };
  const FakeModel refused{"load fail\n"};
  EXPECT_THAT(failureOf(refused.configuration()), HasSubstr("cannot load the model"));
  EXPECT_THAT(failureOf(refused.configuration("/nowhere/libvosk.so")), HasSubstr("/nowhere/libvosk.so"));
  EXPECT_THAT(failureOf(refused.configuration("libdl.so.2")), HasSubstr("vosk_set_log_level"));
  const TemporaryFolder home;
  std::filesystem::create_directories(home.path() / "Tavelo/models/vi_VN");
  EXPECT_THAT(failureOf(VoskConfiguration{home.path(), [](auto) { return std::string{}; }}),
              HasSubstr("empty"));
}

TEST_F(VoskSpeechTest, ADictationOnABrokenModelEndsInAnErrorAndTheNextOneLoadsAgain) {
  const FakeModel model{"load gate\nload fail\n"};
  const auto speech = makeSpeech(model);
  const NumberedDictation dictation{*speech};
  dictation.append(1);
  ASSERT_TRUE(model.waitAtGate());
  model.openGate();
  ASSERT_TRUE(mainQueue.pumpUntil([&] { return dictation.over(); }));
  EXPECT_THAT(*dictation.reports, ElementsAre("error"));
  EXPECT_EQ(notifications.posted, 1);

  model.rewrite("final {\"text\": \"anh\"}\n");
  while (!speech->makeRecognizer("vi_VN")->isAvailable()) std::this_thread::yield();
  EXPECT_THAT(reportsOf(*speech, 1), ElementsAre("[anh]"));
}

TEST_F(VoskSpeechTest, AForeignRequestIsAnError) {
  class ForeignRequest final : public platform::SpeechAudioBufferRecognitionRequest {
    void setShouldReportPartialResults(bool) override {}
    void append(const platform::AudioBuffer&) override {}
    void endAudio() override {}
  };
  const FakeModel model{""};
  const auto speech = makeSpeech(model);
  int errors = 0;
  const auto task = speech->makeRecognizer("vi_VN")->recognitionTask(
      std::make_shared<ForeignRequest>(), [&](const auto&, const auto& error) { errors += error ? 1 : 0; });
  EXPECT_TRUE(mainQueue.pumpUntil([&] { return errors == 1; }));
}

}  // namespace
}  // namespace tavelo::recognizer
