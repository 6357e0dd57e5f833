#pragma once

#include <chrono>
#include <cstdint>

#include "platform/Time.h"

namespace tavelo::linuxdesktop {

/// Converts the X server's time to our steady time. The server counts milliseconds and starts again after
/// 2^32 of them. A server on this machine reads the same clock as we do; for any other the offset is
/// measured.
class ServerClock final {
 public:
  /// Our steady time.
  static platform::Uptime now() { return std::chrono::steady_clock::now().time_since_epoch(); }

  /// Sets the offset: the server's clock read `serverTime` between the two instants.
  void calibrate(std::uint32_t serverTime, platform::Uptime before, platform::Uptime after);

  /// When the server's clock read `serverTime`, which was a short while ago; never later than `now`. If it
  /// cannot have been recent, the clocks drifted: returns `now` and recalibrates.
  platform::Uptime toUptime(std::uint32_t serverTime, platform::Uptime now);

 private:
  /// Our time minus the server's, in milliseconds.
  std::uint32_t offset_ = 0;
};

}  // namespace tavelo::linuxdesktop
