#include <thread>

#include <gtest/gtest.h>

#include "platform/BufferedRecognitionRequest.h"

namespace tavelo::platform {
namespace {

/// One second of sound that starts with `mark`.
AudioBuffer second(std::int16_t mark) { return {{100, 2}, std::vector<std::int16_t>(200, mark)}; }

TEST(BufferedRecognitionRequest, KeepsSoundInOrderUntilItIsTakenAndThenReportsTheEnd) {
  BufferedRecognitionRequest request;
  request.append(second(1));
  request.append(second(2));
  request.endAudio();
  request.append(second(3));
  for (const int mark : {1, 2}) {
    const auto taken = request.take();
    ASSERT_TRUE(taken.buffer);
    EXPECT_EQ(taken.buffer->samples.front(), mark);
    EXPECT_FALSE(taken.ended);
  }
  EXPECT_FALSE(request.take().buffer);
  EXPECT_TRUE(request.take().ended);
}

TEST(BufferedRecognitionRequest, DropsWhatComesBeyondTheBoundAndGoesOnOnceSoundIsTaken) {
  BufferedRecognitionRequest request;
  for (std::int16_t mark = 0; mark < 70; ++mark) request.append(second(mark));
  EXPECT_EQ(request.take().buffer->samples.front(), 0);
  request.append(second(100));
  request.append(second(101));
  std::int16_t last = 0;
  int count = 0;
  while (const auto buffer = request.take().buffer) {
    last = buffer->samples.front();
    ++count;
  }
  EXPECT_EQ(count, 60);
  EXPECT_EQ(last, 100);
}

TEST(BufferedRecognitionRequest, TellsOfEveryArrivalAndOfWhatWaitedAlready) {
  BufferedRecognitionRequest request;
  int arrivals = 0;
  request.onArrival([&] { ++arrivals; });
  EXPECT_EQ(arrivals, 0);
  std::thread([&] { request.append(second(1)); }).join();
  request.endAudio();
  request.endAudio();
  EXPECT_EQ(arrivals, 2);
  // The new listener may call `take` at once, because it is not called under the lock.
  request.onArrival([&] { arrivals += request.take().buffer ? 10 : 0; });
  EXPECT_EQ(arrivals, 12);
  request.onArrival({});
}

}  // namespace
}  // namespace tavelo::platform
