#pragma once

#include <cstdint>

#include "platform/Time.h"

namespace tavelo::linuxdesktop {

/// The X server's clock, which counts milliseconds and begins again after 2^32 of them, told in our steady
/// time. A server of this machine reads the same clock as we do; another one's is measured.
class ServerClock final {
 public:
  /// Learns how far the clocks are apart: the server read `serverTime` between the two instants.
  void calibrate(std::uint32_t serverTime, platform::Uptime before, platform::Uptime after);

  /// When the server read `serverTime`, not long ago; never later than `now`. A time that cannot be recent
  /// means that the clocks have come apart: it counts as now, and the ones after it by that measure.
  platform::Uptime toUptime(std::uint32_t serverTime, platform::Uptime now);

 private:
  /// Ours less the server's, in milliseconds.
  std::uint32_t offset_ = 0;
};

}  // namespace tavelo::linuxdesktop
