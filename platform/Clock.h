#pragma once

#include "platform/Time.h"

namespace tavelo::platform {

/// The wall clock and the steady clock. Any thread; never fails.
class Clock {
 public:
  virtual ~Clock() = default;

  /// Wall-clock time, for display and for files.
  virtual WallTime now() const = 0;

  /// Steady time, for measuring intervals. Keyboard events are stamped with it.
  virtual Uptime uptime() const = 0;
};

}  // namespace tavelo::platform
