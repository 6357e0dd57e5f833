#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "platform/MainQueue.h"

namespace tavelo {

/// A main queue whose blocks run when the test pumps it. It works in real time, since real threads post to
/// it.
class PumpedMainQueue final : public platform::MainQueue {
 public:
  void async(Block block) override {
    {
      const std::lock_guard lock{mutex_};
      blocks_.push_back(std::move(block));
    }
    posted_.notify_one();
  }
  void asyncAfter(platform::Seconds delay, Block block) override {
    later_.push_back({now_ + delay, std::move(block)});
  }
  bool isMainThread() const override { return std::this_thread::get_id() == mainThread_; }
  void runUntil(platform::Uptime) override { std::abort(); }

  /// Runs blocks until `condition` holds; false when nothing is posted for 20 s.
  template <class Condition>
  bool pumpUntil(Condition condition) {
    while (!condition()) {
      if (!waitForPost()) return false;
      std::unique_lock lock{mutex_};
      const Block block = std::move(blocks_.front());
      blocks_.pop_front();
      lock.unlock();
      block();
    }
    return true;
  }

  /// Waits until a block is posted, but does not run it; false when none is within 20 s.
  bool waitForPost() {
    std::unique_lock lock{mutex_};
    return posted_.wait_for(lock, std::chrono::seconds{20}, [this] { return !blocks_.empty(); });
  }

  /// Runs the blocks posted so far and returns their number.
  std::size_t drain() {
    std::deque<Block> blocks;
    {
      const std::lock_guard lock{mutex_};
      blocks.swap(blocks_);
    }
    for (const auto& block : blocks) block();
    return blocks.size();
  }

  /// Lets virtual time pass and runs the delayed blocks that are due, which main-thread code posted.
  void advance(platform::Seconds time) {
    now_ += time;
    std::vector<Delayed> due;
    std::erase_if(later_, [&](auto& each) {
      if (each.at > now_) return false;
      due.push_back(std::move(each));
      return true;
    });
    for (const auto& each : due) each.block();
  }

 private:
  struct Delayed {
    platform::Seconds at;
    Block block;
  };
  platform::Seconds now_{0};
  std::vector<Delayed> later_;
  const std::thread::id mainThread_ = std::this_thread::get_id();
  std::mutex mutex_;
  std::condition_variable posted_;
  std::deque<Block> blocks_;
};

}  // namespace tavelo
