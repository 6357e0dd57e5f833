#include "platform/linux/x11/keyboard/ServerClock.h"

#include <algorithm>

namespace tavelo::linuxdesktop {
namespace {

using std::chrono::milliseconds;

/// How many milliseconds the server may lag behind us on the same clock. Some kernels have a cheap clock that
/// ticks every 10 ms.
constexpr std::int32_t tick = 20;
/// The longest time in milliseconds that an event may wait for the main thread.
constexpr std::int32_t longestDelay = 60000;

std::uint32_t toMilliseconds(platform::Uptime instant) {
  return static_cast<std::uint32_t>(std::chrono::floor<milliseconds>(instant).count());
}

/// `a` minus `b`, across the wrap.
std::int32_t difference(std::uint32_t a, std::uint32_t b) { return static_cast<std::int32_t>(a - b); }

}  // namespace

void ServerClock::calibrate(std::uint32_t serverTime, platform::Uptime before, platform::Uptime after) {
  const bool same = difference(serverTime, toMilliseconds(before)) >= -tick &&
                    difference(serverTime, toMilliseconds(after)) <= tick;
  offset_ = same ? 0 : toMilliseconds(after) - serverTime;
}

platform::Uptime ServerClock::toUptime(std::uint32_t serverTime, platform::Uptime now) {
  // Whole milliseconds, as the server counts: with our fraction, a later key could seem to come first.
  const auto whole = std::chrono::floor<milliseconds>(now);
  const std::int32_t age = difference(toMilliseconds(now), serverTime + offset_);
  if (age < -tick || age > longestDelay) {
    offset_ = toMilliseconds(now) - serverTime;
    return whole;
  }
  return whole - milliseconds(std::max(age, 0));
}

}  // namespace tavelo::linuxdesktop
