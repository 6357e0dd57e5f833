#pragma once

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>

#include "platform/simulated/SimulatedLoop.h"

namespace tavelo::simulated {

/// Time passes as on the machine. Uptime starts at 0, the wall clock at the machine's.
class RealTimeLoop final : public SimulatedLoop {
 public:
  RealTimeLoop();

  platform::Uptime uptime() const override;
  std::unique_ptr<ForeignTicker> startTicker(platform::Uptime first, Tick tick) override;
  void stall(platform::Seconds interval) override;

 protected:
  void waitUntil(std::unique_lock<std::mutex>& lock, platform::Uptime instant) override;
  void posted() override;

 private:
  const std::chrono::steady_clock::time_point start_;
  std::condition_variable arrived_;
};

}  // namespace tavelo::simulated
