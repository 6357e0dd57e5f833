#include "tests/platform/recognizer/VoskSpeechTest.h"

#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace tavelo::recognizer {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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

TEST_F(VoskSpeechTest, TheTranscriptIsTheFinishedUtterancesAndTheCurrentOne) {
  const FakeModel model{twoUtterances};
  const auto speech = makeSpeech(model);
  const NumberedDictation dictation{*speech};
  dictation.append(1);
  // Each new transcript is read before the next buffer is decoded, which would replace it.
  for (const char* transcript :
       {"anh phú", "anh phú", "anh", "anh phú", "anh phú", "anh phú ăn", "anh phú", "anh phú chưa"}) {
    dictation.append(1);
    ASSERT_TRUE(mainQueue.pumpUntil(
        [&] { return !dictation.reports->empty() && dictation.reports->back() == transcript; }));
  }
  EXPECT_THAT(dictation.finish(mainQueue), ElementsAre("anh phú", "anh", "anh phú", "anh phú ăn", "anh phú",
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
  EXPECT_TRUE(isAvailable(*speech)) << "while it is loading";

  const NumberedDictation dictation{*speech};
  dictation.append(3);
  model.openGate();
  dictation.append(1);
  dictation.finish(mainQueue);
  EXPECT_EQ(model.calls(),
            "load\nrecognizer 16000\naccept 8 bytes from 1\naccept 8 bytes from 2\n"
            "accept 8 bytes from 3\naccept 8 bytes from 1\nfinal\n");
}

TEST_F(VoskSpeechTest, ChannelsAreMixedDownAndANewRateGetsANewRecognizer) {
  const FakeModel model{"0 {\"partial\": \"a\"}\nfinal {\"text\": \"anh\"}\n"};
  const auto speech = makeSpeech(model);
  const NumberedDictation dictation{*speech};
  dictation.request->append({{44100, 2}, {32767, 32767, -3, -5, 7}});
  dictation.request->append({{44100, 1}, {-32768}});
  dictation.request->append({{16000, 3}, {}});
  EXPECT_EQ(dictation.finish(mainQueue).back(), "[anh anh]");
  EXPECT_EQ(model.calls(),
            "load\nrecognizer 44100\naccept 4 bytes from 32767\naccept 2 bytes from -32768\nfinal\n"
            "recognizer 16000\naccept 0 bytes from 0\nfinal\n");
}

TEST_F(VoskSpeechTest, WithoutAModelFolderThereIsNoRecognizer) {
  const FakeModel model{""};
  const auto speech = makeSpeech(model);
  EXPECT_EQ(speech->makeRecognizer("en_US"), nullptr);
  EXPECT_EQ(speech->makeRecognizer("../models/vi_VN"), nullptr);
  EXPECT_NE(speech->makeRecognizer("vi_VN"), nullptr);
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

TEST_F(VoskSpeechTest, SoundFromACaptureThreadIsDecodedInOrder) {
  std::string script;
  for (int i = 1; i <= 200; ++i) script += R"(0 {"partial": ")" + std::to_string(i) + "\"}\n";
  const FakeModel model{script};
  const auto speech = makeSpeech(model);
  const NumberedDictation dictation{*speech};
  std::thread capture{[&] {
    dictation.append(200);
    dictation.request->endAudio();
  }};
  EXPECT_TRUE(mainQueue.pumpUntil([&] { return dictation.over(); }));
  capture.join();
  std::string accepted;
  for (int i = 1; i <= 200; ++i) accepted += "accept 8 bytes from " + std::to_string(i) + '\n';
  EXPECT_EQ(model.calls(), "load\nrecognizer 16000\n" + accepted + "final\n");
  for (std::size_t i = 1; i + 1 < dictation.reports->size(); ++i)
    EXPECT_LT(std::stoi(dictation.reports->at(i - 1)), std::stoi(dictation.reports->at(i)));
}

}  // namespace
}  // namespace tavelo::recognizer
