#pragma once

#include <chrono>

#include <time.h>

#include "platform/Clock.h"

namespace tavelo::posix {

/// The system's clocks. The steady one stands still while the computer sleeps, as the times of key events do.
class SystemClock final : public platform::Clock {
 public:
  platform::WallTime now() const override { return std::chrono::system_clock::now(); }
  platform::Uptime uptime() const override {
    timespec time{};
    clock_gettime(awake, &time);
    return std::chrono::seconds{time.tv_sec} + std::chrono::nanoseconds{time.tv_nsec};
  }

 private:
#ifdef CLOCK_UPTIME_RAW
  static constexpr clockid_t awake = CLOCK_UPTIME_RAW;
#else
  static constexpr clockid_t awake = CLOCK_MONOTONIC;
#endif
};

}  // namespace tavelo::posix
