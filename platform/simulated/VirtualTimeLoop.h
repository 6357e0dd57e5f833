#pragma once

#include <atomic>
#include <memory>
#include <mutex>

#include "platform/simulated/SimulatedLoop.h"

namespace tavelo::simulated {

/// Time passes only while the loop runs, and then without waiting. Uptime starts at 0, the wall clock at
/// 2026-01-05 08:00:00 UTC.
class VirtualTimeLoop final : public SimulatedLoop {
 public:
  VirtualTimeLoop();

  platform::Uptime uptime() const override;
  std::unique_ptr<ForeignTicker> startTicker(platform::Uptime first, Tick tick) override;
  void stall(platform::Seconds interval) override;

 protected:
  void waitUntil(std::unique_lock<std::mutex>& lock, platform::Uptime instant) override;
  void posted() override {}

 private:
  std::atomic<platform::Uptime::rep> uptime_{0};
};

}  // namespace tavelo::simulated
