#include <memory>
#include <string>
#include <vector>

#include "tests/platform/recognizer/VoskSpeechTest.h"

namespace tavelo::recognizer {
namespace {

using testing::IsEmpty;

TEST_F(VoskSpeechTest, CancelDoesNotWaitForADecodeAndTheNextDictationRuns) {
  const FakeModel model{"gate 0 {\"partial\": \"anh\"}\nfinal {\"text\": \"anh\"}\n"};
  const auto speech = makeSpeech(model);
  const NumberedDictation first{*speech};
  first.append(3);
  first.request->endAudio();
  ASSERT_TRUE(model.waitAtGate());
  first.task->cancel();

  model.rewrite("0 {\"partial\": \"phú\"}\nfinal {\"text\": \"phú\"}\n");
  const NumberedDictation second{*speech};
  second.append(1);
  second.request->endAudio();
  model.openGate();
  ASSERT_TRUE(mainQueue.pumpUntil([&] { return second.over(); }));
  EXPECT_EQ(second.reports->back(), "[phú]");
  EXPECT_THAT(*first.reports, IsEmpty());
  EXPECT_EQ(
      model.calls(),
      "load\nrecognizer 16000\naccept 8 bytes from 1\nrecognizer 16000\naccept 8 bytes from 1\nfinal\n");
}

TEST_F(VoskSpeechTest, ACancelInTheHandlerDropsQueuedResults) {
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
  for (int i = 0; i < 3; ++i) request->append({{16000, 1}, {1, 2}});
  ASSERT_TRUE(mainQueue.pumpUntil([&] { return !heard.empty(); }));
  EXPECT_EQ(reportsOf(*speech, 1).back(), "[]") << "the engine takes the next dictation";
  EXPECT_THAT(heard, testing::SizeIs(1));
}

TEST_F(VoskSpeechTest, AReleaseBeforeTheModelIsLoadedIsToldAndADiscardedDictationIsNot) {
  const FakeModel model{"load gate\n0 {\"partial\": \"anh\"}\n"};
  const auto speech = makeSpeech(model);
  const NumberedDictation discarded{*speech};
  const NumberedDictation released{*speech};
  ASSERT_TRUE(model.waitAtGate());
  discarded.task->cancel();
  EXPECT_EQ(notifications.posted, 0);
  released.append(1);
  released.request->endAudio();
  released.task->cancel();
  released.task->cancel();
  EXPECT_EQ(notifications.posted, 1);

  model.openGate();
  const NumberedDictation heard{*speech};
  heard.append(1);
  ASSERT_TRUE(mainQueue.pumpUntil([&] { return !heard.reports->empty(); }));
  heard.request->endAudio();
  heard.task->cancel();
  EXPECT_EQ(notifications.posted, 1);
}

TEST_F(VoskSpeechTest, TheDestructorWaitsForTheRunningDecodeAndReportsNothing) {
  const FakeModel model{
      "0 {\"partial\": \"anh\"}\ngate 0 {\"partial\": \"anh phú\"}\nfinal {\"text\": \"anh\"}\n"};
  auto speech = makeSpeech(model);
  const auto recognizer = speech->makeRecognizer("vi_VN");
  // The gate opens when the destructor releases the handler; then it waits for the decode.
  const NumberedDictation dictation{*speech, true,
                                    std::shared_ptr<void>{nullptr, [&](void*) { model.openGate(); }}};
  dictation.append(5);
  dictation.request->endAudio();
  ASSERT_TRUE(model.waitAtGate());
  bool answered = false;
  speech->requestAuthorization([&](auto) { answered = true; });
  speech.reset();
  EXPECT_GE(mainQueue.drain(), 1U) << "a result was queued";
  EXPECT_THAT(*dictation.reports, IsEmpty());
  EXPECT_FALSE(answered);
  EXPECT_THAT(model.calls(), testing::EndsWith("accept 8 bytes from 2\nunload\n"));

  // Request, task and recogniser may outlive the speech.
  dictation.append(1);
  dictation.task->cancel();
  recognizer->recognitionTask(dictation.request, [](const auto&, const auto&) { FAIL(); });
  EXPECT_EQ(mainQueue.drain(), 0U);
}

TEST_F(VoskSpeechTest, AFinalResultInTheQueueIsDroppedWhenTheSpeechIsGone) {
  const FakeModel model{"final {\"text\": \"anh\"}\n"};
  auto speech = makeSpeech(model);
  const NumberedDictation dictation{*speech};
  dictation.append(1);
  dictation.request->endAudio();
  ASSERT_TRUE(mainQueue.waitForPost());
  speech.reset();
  EXPECT_EQ(mainQueue.drain(), 1U);
  EXPECT_THAT(*dictation.reports, IsEmpty());
}

}  // namespace
}  // namespace tavelo::recognizer
