#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <set>
#include <thread>

#include "platform/MainQueue.h"

namespace tavelo::macos {

/// The main queue on the main run loop, in its common modes: blocks run in nested loops, while a menu is open
/// and inside a modal alert, even one that a block opened.
///
/// One block runs per turn of the loop, so blocks that post blocks never keep input waiting. Nothing wakes up
/// while no block is due. Make and destroy it on the main thread; it must outlive every thread that posts.
class RunLoopMainQueue final : public platform::MainQueue {
 public:
  RunLoopMainQueue();
  ~RunLoopMainQueue() override;
  RunLoopMainQueue(const RunLoopMainQueue&) = delete;
  RunLoopMainQueue& operator=(const RunLoopMainQueue&) = delete;

  void async(Block block) override;
  void asyncAfter(platform::Seconds delay, Block block) override;
  bool isMainThread() const override { return std::this_thread::get_id() == mainThread_; }
  void runUntil(platform::Uptime deadline) override;

 private:
  /// The source and the timer that wake the run loop.
  class Alarm;
  struct Entry {
    platform::Uptime deadline;
    std::uint64_t number;
    Block block;
  };
  struct Order {
    bool operator()(const Entry& a, const Entry& b) const;
  };

  void post(platform::Uptime delay, Block block);
  /// A turn of the loop: runs the first block if it is due. Main thread.
  void perform();
  Block takeDueBlock();
  void setAlarm();

  const std::thread::id mainThread_ = std::this_thread::get_id();
  std::mutex mutex_;
  std::set<Entry, Order> entries_;
  std::uint64_t nextNumber_ = 0;
  const std::unique_ptr<Alarm> alarm_;
};

}  // namespace tavelo::macos
