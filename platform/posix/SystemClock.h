#pragma once

#include "platform/Clock.h"

namespace tavelo::posix {

/// The system's clocks; the steady one is CLOCK_MONOTONIC.
class SystemClock final : public platform::Clock {
 public:
  platform::WallTime now() const override;
  platform::Uptime uptime() const override;
};

}  // namespace tavelo::posix
