#include "platform/posix/SystemClock.h"

#include <chrono>

namespace tavelo::posix {

platform::WallTime SystemClock::now() const { return std::chrono::system_clock::now(); }

platform::Uptime SystemClock::uptime() const { return std::chrono::steady_clock::now().time_since_epoch(); }

}  // namespace tavelo::posix
