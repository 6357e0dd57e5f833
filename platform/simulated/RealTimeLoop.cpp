#include "platform/simulated/RealTimeLoop.h"

#include <optional>
#include <thread>
#include <utility>

namespace tavelo::simulated {
namespace {

/// Makes its calls on a thread of its own.
class RealTicker final : public ForeignTicker {
 public:
  RealTicker(std::chrono::steady_clock::time_point start, platform::Uptime first, SimulatedLoop::Tick tick)
      : thread_([this, start, first, tick = std::move(tick)] { work(start, first, tick); }) {}

  ~RealTicker() override {
    {
      const std::lock_guard lock{mutex_};
      ended_ = true;
    }
    changed_.notify_all();
    thread_.join();
  }

 private:
  void work(std::chrono::steady_clock::time_point start, platform::Uptime first,
            const SimulatedLoop::Tick& tick) {
    std::optional<platform::Uptime> due = first;
    while (due) {
      {
        std::unique_lock lock{mutex_};
        if (changed_.wait_until(lock, start + *due, [this] { return ended_; })) return;
      }
      due = tick();
    }
  }

  std::mutex mutex_;
  std::condition_variable changed_;
  bool ended_ = false;
  std::thread thread_;
};

}  // namespace

RealTimeLoop::RealTimeLoop()
    : SimulatedLoop(std::chrono::system_clock::now()), start_(std::chrono::steady_clock::now()) {}

platform::Uptime RealTimeLoop::uptime() const {
  return std::chrono::duration_cast<platform::Uptime>(std::chrono::steady_clock::now() - start_);
}

std::unique_ptr<ForeignTicker> RealTimeLoop::startTicker(platform::Uptime first, Tick tick) {
  return std::make_unique<RealTicker>(start_, first, std::move(tick));
}

void RealTimeLoop::stall(platform::Seconds interval) { std::this_thread::sleep_for(interval); }

void RealTimeLoop::waitUntil(std::unique_lock<std::mutex>& lock, platform::Uptime instant) {
  arrived_.wait_until(lock, start_ + instant);
}

void RealTimeLoop::posted() { arrived_.notify_all(); }

}  // namespace tavelo::simulated
