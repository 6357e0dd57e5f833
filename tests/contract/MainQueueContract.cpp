#include "tests/contract/MainQueueContract.h"

#include <chrono>
#include <thread>
#include <vector>

#include <gmock/gmock.h>

namespace tavelo::contract {
namespace {

using platform::Seconds;
using platform::Uptime;
using testing::ElementsAre;

TEST_P(MainQueueContract, BlocksRunLaterInOrderOnTheMainThread) {
  std::vector<int> order;
  for (int i = 0; i < 3; ++i) {
    queue().async([&, i] {
      EXPECT_TRUE(queue().isMainThread());
      order.push_back(i);
    });
  }
  EXPECT_TRUE(order.empty());
  EXPECT_TRUE(runUntil([&] { return order.size() == 3; }));
  EXPECT_THAT(order, ElementsAre(0, 1, 2));
}

TEST_P(MainQueueContract, DelayedBlocksRunByDeadlineThenPosting) {
  std::vector<int> order;
  queue().asyncAfter(Seconds{0.100}, [&] { order.push_back(3); });
  queue().asyncAfter(Seconds{0.050}, [&] { order.push_back(1); });
  queue().asyncAfter(Seconds{0.050}, [&] { order.push_back(2); });
  queue().asyncAfter(Seconds{-1}, [&] { order.push_back(0); });
  EXPECT_TRUE(order.empty());
  EXPECT_TRUE(runUntil([&] { return order.size() == 4; }));
  EXPECT_THAT(order, ElementsAre(0, 1, 2, 3));
}

TEST_P(MainQueueContract, DelayedBlockNeverRunsEarly) {
  const Uptime posted = clock().uptime();
  std::vector<Uptime> ran;
  queue().asyncAfter(Seconds{0.010}, [&] { ran.push_back(clock().uptime()); });
  ASSERT_TRUE(runUntil([&] { return !ran.empty(); }));
  EXPECT_GE(ran.front() - posted, std::chrono::milliseconds{10});
}

TEST_P(MainQueueContract, PostsOfAnotherThreadRunOnTheMainThreadInOrder) {
  std::vector<int> order;
  bool foreignIsMain = true;
  std::thread{[&] {
    foreignIsMain = queue().isMainThread();
    queue().async([&] { order.push_back(queue().isMainThread() ? 1 : -1); });
    queue().asyncAfter(Seconds{0.001}, [&] { order.push_back(queue().isMainThread() ? 2 : -2); });
  }}.join();
  EXPECT_TRUE(order.empty());
  EXPECT_TRUE(runUntil([&] { return order.size() == 2; }));
  EXPECT_FALSE(foreignIsMain);
  EXPECT_THAT(order, ElementsAre(1, 2));
}

TEST_P(MainQueueContract, NestedRunServesOthersAndReturnsAtItsDeadline) {
  std::vector<int> order;
  queue().async([&] {
    order.push_back(1);
    const Uptime deadline = clock().uptime() + std::chrono::milliseconds{100};
    queue().asyncAfter(Seconds{0.002}, [&] { order.push_back(3); });
    queue().runUntil(deadline);
    EXPECT_GE(clock().uptime(), deadline);
    order.push_back(4);
  });
  queue().async([&] { order.push_back(2); });
  queue().asyncAfter(Seconds{0.5}, [&] { order.push_back(5); });
  EXPECT_TRUE(runUntil([&] { return order.size() == 5; }));
  EXPECT_THAT(order, ElementsAre(1, 2, 3, 4, 5));
}

TEST_P(MainQueueContract, RunUntilThePastReturnsAtOnce) {
  run(Seconds{0.002});
  bool ran = false;
  queue().async([&] { ran = true; });
  queue().runUntil(clock().uptime() - std::chrono::milliseconds{1});
  EXPECT_FALSE(ran);
  EXPECT_TRUE(runUntil([&] { return ran; }));
}

}  // namespace
}  // namespace tavelo::contract
