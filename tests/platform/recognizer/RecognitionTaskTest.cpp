#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/recognizer/RecognitionTask.h"
#include "tests/platform/recognizer/PumpedMainQueue.h"

namespace tavelo::recognizer {
namespace {

using testing::ElementsAre;

/// A task whose reports are kept: the transcripts, the final one in brackets, and "error" for an error.
class RecognitionTaskTest : public testing::Test {
 protected:
  PumpedMainQueue queue_;
  std::vector<std::string> reports_;
  std::shared_ptr<RecognitionTask> task_ =
      std::make_shared<RecognitionTask>(queue_, true, [this](const auto& result, const auto& error) {
        if (result)
          reports_.push_back(result->isFinal ? "[" + result->formattedString + "]" : result->formattedString);
        if (error) reports_.push_back("error");
      });
};

TEST_F(RecognitionTaskTest, ControlCharactersBecomeSpaces) {
  task_->reportPartial("rm\n\r\t\v\f\x1b[31m\x7f;\xc2\x85\xc2\x9b\xe2\x80\xa8\xe2\x80\xa9." +
                       std::string(1, '\0'));
  queue_.drain();
  // A lone surrogate and half a letter. Each of their bytes is ill-formed.
  task_->reportFinal("ạ\n\xed\xa0\x80 \xe1\xba");
  queue_.drain();
  EXPECT_THAT(reports_,
              ElementsAre("rm      [31m ;    . ", "[ạ \xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd \xef\xbf\xbd]"));
}

TEST_F(RecognitionTaskTest, OnlyTheNewestResultWaits) {
  for (int i = 0; i < 1000; ++i) task_->reportPartial(std::to_string(i));
  EXPECT_EQ(queue_.drain(), 1U);
  EXPECT_THAT(reports_, ElementsAre("999"));
  task_->reportPartial("a");
  task_->reportFinal("ab");
  task_->reportPartial("too late");
  EXPECT_EQ(queue_.drain(), 1U);
  EXPECT_THAT(reports_, ElementsAre("999", "[ab]"));
}

TEST_F(RecognitionTaskTest, AnErrorDoesNotReplaceWhatWasHeardBefore) {
  task_->reportPartial("anh");
  task_->fail();
  task_->reportFinal("too late");
  queue_.drain();
  EXPECT_THAT(reports_, ElementsAre("anh", "error"));
}

TEST_F(RecognitionTaskTest, AStopDeliversWhatWasHeardOnceAndNothingFinal) {
  struct Case {
    const char* name;
    std::function<void(RecognitionTask&)> during;
    std::function<void(RecognitionTask&)> after;
    const char* delivered;
    int incomplete;
  };
  const auto nothing = [](RecognitionTask&) {};
  const auto final = [](const char* text) {
    return [text](RecognitionTask& task) { task.reportFinal(text); };
  };
  const auto error = [](RecognitionTask& task) { task.fail(); };
  for (const Case& each : std::vector<Case>{{"final", final("anh phú"), nothing, "anh phú", 0},
                                            {"error", error, nothing, "anh", 1},
                                            {"late, as heard", nothing, final("em"), "anh", 0},
                                            {"late, in other words", nothing, final("cánh"), "anh", 0},
                                            {"late, with more words", nothing, final("anh phú"), "anh", 1},
                                            {"late, with the whole word", nothing, final("anhi"), "anh", 1},
                                            {"late error", nothing, error, "anh", 1}}) {
    SCOPED_TRACE(each.name);
    std::vector<std::string> reports;
    int incomplete = 0;
    const auto task =
        std::make_shared<RecognitionTask>(queue_, true, [&](const auto& result, const auto& failure) {
          reports.push_back(failure || result->isFinal ? "last" : result->formattedString);
        });
    task->onIncomplete([&](const std::string& reason) { incomplete += reason.empty() ? 0 : 1; });
    task->reportPartial("anh");
    std::thread engine{[&] { each.during(*task); }};
    task->stop();
    engine.join();
    task->cancel();
    each.after(*task);
    queue_.drain();
    EXPECT_THAT(reports, ElementsAre(each.delivered));
    EXPECT_EQ(incomplete, each.incomplete);
    EXPECT_TRUE(task->isOver());
  }
}

TEST_F(RecognitionTaskTest, AStopInsideADeliveryOrOffTheMainThreadOrAfterACancelDeliversNothing) {
  task_->reportPartial("anh");
  std::thread{[this] { task_->stop(); }}.join();
  EXPECT_THAT(reports_, testing::IsEmpty());
  int heardNothing = 0;
  const auto silent =
      std::make_shared<RecognitionTask>(queue_, true, [&](const auto&, const auto&) { ++heardNothing; });
  silent->reportFinal("");
  silent->stop();
  EXPECT_EQ(heardNothing, 0);
  std::shared_ptr<RecognitionTask> stopped;
  int calls = 0;
  stopped = std::make_shared<RecognitionTask>(queue_, true, [&](const auto&, const auto&) {
    ++calls;
    stopped->reportPartial("anh phú");
    stopped->stop();
  });
  stopped->reportPartial("anh");
  queue_.drain();
  queue_.drain();
  EXPECT_EQ(calls, 1);
  task_->cancel();
  task_->stop();
  EXPECT_THAT(reports_, ElementsAre("anh"));
}

}  // namespace
}  // namespace tavelo::recognizer
