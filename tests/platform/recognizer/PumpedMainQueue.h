#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <deque>
#include <mutex>
#include <thread>

#include "platform/MainQueue.h"

namespace tavelo {

/// A main queue that runs its blocks while the test pumps it, in real time, since what posts to it are real
/// threads.
class PumpedMainQueue final : public platform::MainQueue {
 public:
  void async(Block block) override {
    {
      const std::lock_guard lock{mutex_};
      blocks_.push_back(std::move(block));
    }
    posted_.notify_one();
  }
  void asyncAfter(platform::Seconds, Block) override { std::abort(); }
  bool isMainThread() const override { return std::this_thread::get_id() == mainThread_; }
  void runUntil(platform::Uptime) override { std::abort(); }

  /// Runs blocks until `condition` holds; false when that took too long.
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

  /// Waits until a block can be run, and runs none; false when that took too long.
  bool waitForPost() {
    std::unique_lock lock{mutex_};
    return posted_.wait_for(lock, std::chrono::seconds{20}, [this] { return !blocks_.empty(); });
  }

  /// Runs what has been posted so far; how much that was.
  std::size_t drain() {
    std::deque<Block> blocks;
    {
      const std::lock_guard lock{mutex_};
      blocks.swap(blocks_);
    }
    for (const auto& block : blocks) block();
    return blocks.size();
  }

 private:
  const std::thread::id mainThread_ = std::this_thread::get_id();
  std::mutex mutex_;
  std::condition_variable posted_;
  std::deque<Block> blocks_;
};

}  // namespace tavelo
