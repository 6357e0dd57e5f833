#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <thread>

#include "platform/Clock.h"
#include "platform/MainQueue.h"

namespace tavelo::simulated {

/// Calls a function repeatedly on a thread other than the main one. Dropping it ends the calls: none is
/// running afterwards. Main thread.
class ForeignTicker {
 public:
  virtual ~ForeignTicker() = default;
};

/// The main queue and the clock of the simulated desktop. The thread that makes it is the main thread.
///
/// The subclasses implement virtual and real time. Main thread, except for what `MainQueue` and `Clock` allow
/// on any thread. A block that throws is a program error.
class SimulatedLoop : public platform::MainQueue, public platform::Clock {
 public:
  /// Returns when the next call is due; absent to end.
  using Tick = std::function<std::optional<platform::Uptime>()>;

  /// `wallTimeAtStart` is the wall-clock time when the uptime is 0.
  explicit SimulatedLoop(platform::WallTime wallTimeAtStart);
  ~SimulatedLoop() override;
  SimulatedLoop(const SimulatedLoop&) = delete;
  SimulatedLoop& operator=(const SimulatedLoop&) = delete;

  void async(Block block) override;
  void asyncAfter(platform::Seconds delay, Block block) override;
  bool isMainThread() const override;
  void runUntil(platform::Uptime deadline) override;
  platform::WallTime now() const override;

  /// Lets `interval` pass and runs the blocks that fall due; 0 runs those due now.
  void advance(platform::Seconds interval);

  /// Runs until `condition` holds; it is checked before the first block and after each one. False if it still
  /// does not hold after `bound`.
  bool runUntil(const std::function<bool()>& condition, platform::Seconds bound);

  /// Like `asyncAfter`, but at an instant. An instant in the past means now.
  void asyncAt(platform::Uptime deadline, Block block);

  /// Runs `block` on another thread once `delay` has passed. The main thread waits for it, so the order of
  /// events is the same in every run.
  void foreignAfter(platform::Seconds delay, Block block);

  /// Calls `tick` on another thread, first at `first`. In virtual time the main thread waits for each call.
  virtual std::unique_ptr<ForeignTicker> startTicker(platform::Uptime first, Tick tick) = 0;

  /// Keeps the main thread busy for `interval`: time passes, but no block runs.
  virtual void stall(platform::Seconds interval) = 0;

  /// Drops all waiting blocks.
  void discardBlocks();

 protected:
  /// Lets time pass until `instant`, or until a block is posted; `lock` holds the queue.
  virtual void waitUntil(std::unique_lock<std::mutex>& lock, platform::Uptime instant) = 0;
  /// A block was posted, from any thread; the queue is locked.
  virtual void posted() = 0;

 private:
  struct Entry {
    platform::Uptime deadline{};
    std::uint64_t number = 0;
    mutable Block block;

    bool operator<(const Entry& other) const {
      return deadline != other.deadline ? deadline < other.deadline : number < other.number;
    }
  };

  bool runNext(platform::Uptime deadline);
  std::optional<Entry> takeDue(platform::Uptime deadline);
  void countBlockOfInstant();

  const std::thread::id mainThread_;
  std::mutex mutex_;
  std::set<Entry> queue_;
  std::uint64_t nextNumber_ = 0;
  platform::Uptime lastInstant_{};
  std::uint64_t blocksOfInstant_ = 0;
  const platform::WallTime wallTimeAtStart_;
};

}  // namespace tavelo::simulated
