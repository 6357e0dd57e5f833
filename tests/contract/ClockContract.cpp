#include "tests/contract/ClockContract.h"

#include <chrono>
#include <cmath>
#include <thread>

namespace tavelo::contract {
namespace {

using platform::Seconds;

TEST_P(ClockContract, BothClocksMoveTogether) {
  const auto wall = clock().now();
  const auto steady = clock().uptime();
  pass();
  const Seconds wallPassed = clock().now() - wall;
  const Seconds steadyPassed = clock().uptime() - steady;
  EXPECT_GT(steadyPassed, Seconds{0.001});
  // A busy machine may delay the second reading.
  EXPECT_LT(std::abs((wallPassed - steadyPassed).count()), 0.5);
}

TEST_P(ClockContract, UptimeIsTheSameClockOnEveryThread) {
  const auto before = clock().uptime();
  platform::Uptime between{};
  std::thread{[&] { between = clock().uptime(); }}.join();
  EXPECT_LE(before, between);
  EXPECT_LE(between, clock().uptime());
}

}  // namespace
}  // namespace tavelo::contract
