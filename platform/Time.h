#pragma once

#include <chrono>

namespace tavelo::platform {

/// An interval in seconds, as every delay of the program is written.
using Seconds = std::chrono::duration<double>;

/// Steady time since an arbitrary start; never set back. Whole nanoseconds, so that a threshold is met
/// exactly.
using Uptime = std::chrono::nanoseconds;

/// A wall-clock instant with sub-second resolution; the user may set it back.
using WallTime = std::chrono::system_clock::time_point;

/// `interval` rounded to the nanosecond.
constexpr Uptime toUptime(Seconds interval) { return std::chrono::round<Uptime>(interval); }

}  // namespace tavelo::platform
