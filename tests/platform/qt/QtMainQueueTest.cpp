#include <QMessageBox>
#include <QTimer>
#include <functional>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "platform/posix/SystemClock.h"
#include "platform/qt/QtMainQueue.h"
#include "tests/platform/qt/OffscreenApplication.h"

namespace tavelo::qt {
namespace {

using platform::Seconds;

class QtMainQueueTest : public testing::Test {
 protected:
  QtMainQueueTest() { offscreenApplication(); }
  void run(double seconds) { queue_.runUntil(clock_.uptime() + platform::toUptime(Seconds{seconds})); }

  posix::SystemClock clock_;
  QtMainQueue queue_{clock_};
};

TEST_F(QtMainQueueTest, BlocksRunInsideAModalDialogAndInsideEachOther) {
  std::string order;
  queue_.async([&] {
    QMessageBox alert;
    queue_.async([&] {
      order += "in ";
      run(0.005);
      order += "back ";
      queue_.asyncAfter(Seconds{0.001}, [&] {
        order += "close ";
        alert.accept();
      });
    });
    queue_.async([&] { order += "nested "; });
    alert.exec();
    order += "out";
  });
  for (int i = 0; i < 1000 && !order.ends_with("out"); ++i) run(0.005);
  EXPECT_EQ(order, "in nested back close out");
}

TEST_F(QtMainQueueTest, BlocksThatPostBlocksLeaveRoomForTheRestOfTheLoop) {
  int rounds = 0;
  bool served = false;
  std::function<void()> again = [&] {
    if (!served && ++rounds < 1'000'000) queue_.async(again);
  };
  queue_.async(again);
  QTimer::singleShot(2, [&] { served = true; });
  for (int i = 0; i < 1000 && !served; ++i) run(0.005);
  EXPECT_TRUE(served);
  EXPECT_LT(rounds, 1'000'000);
}

TEST_F(QtMainQueueTest, DelaysBeyondAllBoundsNeitherFailNorComeEarly) {
  bool soon = false;
  bool late = false;
  queue_.asyncAfter(Seconds{std::numeric_limits<double>::infinity()}, [&] { late = true; });
  queue_.asyncAfter(Seconds{1e300}, [&] { late = true; });
  queue_.asyncAfter(Seconds{std::numeric_limits<double>::quiet_NaN()}, [&] { soon = true; });
  for (int i = 0; i < 1000 && !soon; ++i) run(0.005);
  EXPECT_TRUE(soon);
  EXPECT_FALSE(late);
}

TEST_F(QtMainQueueTest, NestedRunEndsWhenTheApplicationQuits) {
  const auto start = clock_.uptime();
  queue_.async([&] {
    queue_.async([] { QCoreApplication::quit(); });
    run(20);
  });
  QCoreApplication::exec();
  EXPECT_LT(clock_.uptime() - start, std::chrono::seconds{10});
}

}  // namespace
}  // namespace tavelo::qt
