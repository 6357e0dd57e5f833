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

/// Calls a function on a thread that is not the main one, again and again. Dropping it ends that; no call is
/// running or begins afterwards. Main thread.
class ForeignTicker {
 public:
  virtual ~ForeignTicker() = default;
};

/// The main queue and the clock of the simulated desktop. The thread that makes it is the main thread.
///
/// What the two kinds of time differ in is behind the protected functions. Main thread, but for what the
/// platform's interfaces allow on any thread. A block that throws is a program error.
class SimulatedLoop : public platform::MainQueue, public platform::Clock {
 public:
  /// One call's work; returns when the next call is due, absent to end.
  using Tick = std::function<std::optional<platform::Uptime>()>;

  SimulatedLoop();
  ~SimulatedLoop() override;
  SimulatedLoop(const SimulatedLoop&) = delete;
  SimulatedLoop& operator=(const SimulatedLoop&) = delete;

  void async(Block block) override;
  void asyncAfter(platform::Seconds delay, Block block) override;
  bool isMainThread() const override;
  void runUntil(platform::Uptime deadline) override;
  platform::WallTime now() const override;

  /// Sets the wall clock, which moves on from there; the uptime is untouched.
  void setWallTime(platform::WallTime now);

  /// Runs what falls due while `interval` passes; 0 runs what is due now.
  void advance(platform::Seconds interval);

  /// Runs until `condition` holds, asked before the first block and after each. False when it does not hold
  /// by the time `bound` has passed.
  bool runUntil(const std::function<bool()>& condition, platform::Seconds bound);

  /// Runs until no block waits (background blocks do not count). False when some still do after `bound`.
  bool runUntilIdle(platform::Seconds bound);

  /// Like `asyncAfter`, at an instant; a `background` block (a key that repeats, a microphone that is open)
  /// does not keep `runUntilIdle` going. An instant in the past is now.
  void asyncAt(platform::Uptime deadline, Block block, bool background = false);

  /// Runs `block` on a foreign thread once `delay` has passed. The main thread waits for it, so that the
  /// order of events is the same at every run.
  void foreignAfter(platform::Seconds delay, Block block);

  /// Calls `tick` on a foreign thread, first at `first`. In virtual time the main thread waits for each call.
  virtual std::unique_ptr<ForeignTicker> startTicker(platform::Uptime first, Tick tick) = 0;

  /// The main thread is busy for `interval`: time passes, no block runs.
  virtual void stall(platform::Seconds interval) = 0;

  /// Drops the blocks that wait.
  void discardBlocks();

 protected:
  /// Lets time come to `instant`, or returns earlier because a block was posted; `lock` holds the queue.
  virtual void waitUntil(std::unique_lock<std::mutex>& lock, platform::Uptime instant) = 0;
  /// A block was posted, from any thread; the queue is locked.
  virtual void posted() = 0;

 private:
  struct Entry {
    platform::Uptime deadline{};
    std::uint64_t number = 0;
    bool background = false;
    mutable Block block;

    bool operator<(const Entry& other) const {
      return deadline != other.deadline ? deadline < other.deadline : number < other.number;
    }
  };

  bool runNext(platform::Uptime deadline);
  std::optional<Entry> takeDue(platform::Uptime deadline);
  bool hasForegroundBlocks() const;
  void countBlockOfInstant();

  const std::thread::id mainThread_;
  mutable std::mutex mutex_;
  std::set<Entry> queue_;
  std::uint64_t nextNumber_ = 0;
  platform::Uptime lastInstant_{};
  std::uint64_t blocksOfInstant_ = 0;
  platform::WallTime wallTimeAtStart_;
};

}  // namespace tavelo::simulated
