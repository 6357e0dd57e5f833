#include <gtest/gtest.h>

#include "platform/linux/x11/keyboard/ServerClock.h"

namespace tavelo::linuxdesktop {
namespace {

using namespace std::chrono_literals;

TEST(ServerClock, SameClockTellsTheTimeOfTheKeyAcrossTheWrap) {
  ServerClock clock;
  // The server's 32-bit milliseconds wrap 100 ms after the start.
  constexpr platform::Uptime start = 4294967296ms - 100ms;
  clock.calibrate(0xFFFFFF9C - 4, start, start + 1ms);
  EXPECT_EQ(clock.toUptime(0xFFFFFFFE, start + 700ms), start + 98ms);
  EXPECT_EQ(clock.toUptime(50, start + 700ms), start + 150ms);
}

TEST(ServerClock, LaterKeyIsNeverTheEarlierOneHoweverLateTheyAreRead) {
  ServerClock clock;
  const auto first = clock.toUptime(1000, 1001ms + 900us);
  EXPECT_LE(first, clock.toUptime(1000, 1002ms + 100us));
}

TEST(ServerClock, AnotherMachinesClockIsMeasuredAndNeverRunsAhead) {
  ServerClock clock;
  clock.calibrate(3'000'000'000, 10s, 10s);
  EXPECT_EQ(clock.toUptime(3'000'000'250, 11s), 10250ms);
  EXPECT_EQ(clock.toUptime(3'000'001'010, 11s), 11s);
}

TEST(ServerClock, ClocksThatDriftedAreRecalibrated) {
  for (const std::uint32_t wrong : {500'000U, 4'000'000'000U}) {
    ServerClock clock;
    EXPECT_EQ(clock.toUptime(wrong, 1000s), 1000s);
    EXPECT_EQ(clock.toUptime(wrong + 200, 1000s + 900ms), 1000s + 200ms);
  }
}

}  // namespace
}  // namespace tavelo::linuxdesktop
