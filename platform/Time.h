#pragma once

#include <chrono>

namespace tavelo::platform {

/// An interval in seconds. All delays of the program are written in it.
using Seconds = std::chrono::duration<double>;

/// Steady time since an arbitrary start; never runs backwards. Whole nanoseconds, so that thresholds compare
/// exactly.
using Uptime = std::chrono::nanoseconds;

/// A wall-clock instant with sub-second resolution. The user may set the clock back.
using WallTime = std::chrono::system_clock::time_point;

/// `interval` rounded to the nanosecond.
constexpr Uptime toUptime(Seconds interval) { return std::chrono::round<Uptime>(interval); }

}  // namespace tavelo::platform
