#include "platform/linux/x11/keyboard/ServerClock.h"

#include <algorithm>
#include <chrono>

namespace tavelo::linuxdesktop {
namespace {

using std::chrono::milliseconds;

/// How far behind ours the server may read the same clock: some kernels' cheap clock ticks every 10 ms.
constexpr std::int32_t tick = 20;
/// A main thread that was kept longer than this has other troubles.
constexpr std::int32_t longestDelay = 60000;

std::uint32_t toMilliseconds(platform::Uptime instant) {
  return static_cast<std::uint32_t>(std::chrono::floor<milliseconds>(instant).count());
}

/// `a` less `b`, the one shortly before or after the other.
std::int32_t difference(std::uint32_t a, std::uint32_t b) { return static_cast<std::int32_t>(a - b); }

}  // namespace

void ServerClock::calibrate(std::uint32_t serverTime, platform::Uptime before, platform::Uptime after) {
  const bool same = difference(serverTime, toMilliseconds(before)) >= -tick &&
                    difference(serverTime, toMilliseconds(after)) <= tick;
  offset_ = same ? 0 : toMilliseconds(after) - serverTime;
}

platform::Uptime ServerClock::toUptime(std::uint32_t serverTime, platform::Uptime now) {
  // In the server's whole milliseconds: with a fraction of ours, a later key could seem the earlier one.
  const auto whole = std::chrono::floor<milliseconds>(now);
  const std::int32_t age = difference(toMilliseconds(now), serverTime + offset_);
  if (age < -tick || age > longestDelay) {
    offset_ = toMilliseconds(now) - serverTime;
    return whole;
  }
  return whole - milliseconds(std::max(age, 0));
}

}  // namespace tavelo::linuxdesktop
