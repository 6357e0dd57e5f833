#pragma once

#include "platform/Time.h"

namespace tavelo::platform {

/// The two clocks of the platform. Any thread; never fails.
class Clock {
 public:
  virtual ~Clock() = default;

  /// Wall-clock time, for what is shown to people and written to files.
  virtual WallTime now() const = 0;

  /// Steady time, for measuring intervals. The same clock stamps keyboard events.
  virtual Uptime uptime() const = 0;
};

}  // namespace tavelo::platform
