#include "platform/simulated/VirtualTimeLoop.h"

#include <chrono>
#include <thread>
#include <utility>

namespace tavelo::simulated {
namespace {

constexpr std::chrono::sys_seconds firstWallTime =
    std::chrono::sys_days{std::chrono::year{2026} / 1 / 5} + std::chrono::hours{8};

/// Each call is a block that starts a thread and waits for it.
class VirtualTicker final : public ForeignTicker {
 public:
  VirtualTicker(SimulatedLoop& loop, platform::Uptime first, SimulatedLoop::Tick tick)
      : tick_(std::make_shared<SimulatedLoop::Tick>(std::move(tick))) {
    schedule(loop, tick_, first);
  }

 private:
  static void schedule(SimulatedLoop& loop, const std::weak_ptr<SimulatedLoop::Tick>& weak,
                       platform::Uptime due) {
    const auto call = [&loop, weak] {
      const auto tick = weak.lock();
      if (!tick) return;
      std::optional<platform::Uptime> next;
      std::thread{[&] { next = (*tick)(); }}.join();
      if (next) schedule(loop, weak, *next);
    };
    loop.asyncAt(due, call);
  }

  std::shared_ptr<SimulatedLoop::Tick> tick_;
};

}  // namespace

VirtualTimeLoop::VirtualTimeLoop() : SimulatedLoop(firstWallTime) {}

platform::Uptime VirtualTimeLoop::uptime() const { return platform::Uptime{uptime_.load()}; }

std::unique_ptr<ForeignTicker> VirtualTimeLoop::startTicker(platform::Uptime first, Tick tick) {
  return std::make_unique<VirtualTicker>(*this, first, std::move(tick));
}

void VirtualTimeLoop::stall(platform::Seconds interval) {
  if (interval > platform::Seconds{0}) uptime_ += platform::toUptime(interval).count();
}

void VirtualTimeLoop::waitUntil(std::unique_lock<std::mutex>&, platform::Uptime instant) {
  uptime_ = instant.count();
}

}  // namespace tavelo::simulated
