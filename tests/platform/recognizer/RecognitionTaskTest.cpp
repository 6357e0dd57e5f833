#include <memory>
#include <string>
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

}  // namespace
}  // namespace tavelo::recognizer
