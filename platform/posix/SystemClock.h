#pragma once

#include <chrono>

#include "platform/Clock.h"

namespace tavelo::posix {

/// The system's clocks. The steady one is CLOCK_MONOTONIC.
class SystemClock final : public platform::Clock {
 public:
  platform::WallTime now() const override { return std::chrono::system_clock::now(); }
  platform::Uptime uptime() const override { return std::chrono::steady_clock::now().time_since_epoch(); }
};

}  // namespace tavelo::posix
