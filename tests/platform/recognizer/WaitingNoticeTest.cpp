#include <csignal>

#include <gmock/gmock.h>

#include "platform/recognizer/WaitingNotice.h"
#include "tests/platform/recognizer/ProcessSpeechFixture.h"

namespace tavelo::recognizer {
namespace {

using testing::HasSubstr;
using WaitingNoticeTest = ProcessSpeechTest;

TEST_F(WaitingNoticeTest, ALoadThatDictationsWaitForIsToldOnceAndWithdrawnWhenItIsOver) {
  using platform::Seconds;
  fault("0 stop 1");
  const ReportedDictation held{*speech_};
  const ReportedDictation another{*speech_};
  {
    const ReportedDictation cancelled{*speech_};
    cancelled.task->cancel();
  }
  queue_.advance(WaitingNotice::delay - Seconds{0.1});
  EXPECT_EQ(notifications_.shown, 0);
  queue_.advance(Seconds{0.2});
  queue_.advance(Seconds{1});
  EXPECT_EQ(notifications_.shown, 1);
  EXPECT_EQ(notifications_.visible, 1);
  held.request->append({{16000, 1}, {1}});
  kill(stopped(), SIGCONT);
  EXPECT_EQ(held.finish(queue_).back(), "[1]");
  queue_.advance(Seconds{1});
  EXPECT_EQ(notifications_.visible, 0);
  another.task->cancel();
  // A model that is there is not worth a word, nor is a dictation that was cancelled.
  const ReportedDictation next{*speech_};
  queue_.advance(Seconds{2});
  EXPECT_EQ(notifications_.shown, 1);
  EXPECT_EQ(notifications_.posted, 0);
}

TEST_F(WaitingNoticeTest, WhoReleasedTooEarlyIsToldWhenToSpeakAgain) {
  fault("0 stop 1");
  const ReportedDictation dictation{*speech_};
  queue_.advance(platform::Seconds{1});
  dictation.request->endAudio();
  dictation.task->cancel();
  EXPECT_EQ(notifications_.posted, 1);
  EXPECT_EQ(notifications_.visible, 0);
  kill(stopped(), SIGCONT);
  EXPECT_EQ(speech_->failure("vi_VN", patience), "");
  queue_.advance(platform::Seconds{1});
  EXPECT_EQ(notifications_.posted, 2);
  EXPECT_THAT(notifications_.last, HasSubstr("Hãy nói lại"));
}

TEST_F(WaitingNoticeTest, WhoSpeaksAgainInTimeIsToldToGoOnAndNotToRepeat) {
  fault("0 stop 1");
  {
    const ReportedDictation early{*speech_};
    early.request->endAudio();
    early.task->cancel();
  }
  const ReportedDictation again{*speech_};
  queue_.advance(platform::Seconds{1});
  EXPECT_EQ(notifications_.visible, 1);
  again.request->append({{16000, 1}, {1}});
  kill(stopped(), SIGCONT);
  EXPECT_EQ(again.finish(queue_).back(), "[1]");
  queue_.advance(platform::Seconds{1});
  EXPECT_EQ(notifications_.posted, 1);
}

}  // namespace
}  // namespace tavelo::recognizer
