#pragma once

#include <functional>

#include "platform/Time.h"

namespace tavelo::platform {

/// The queue of blocks that run on the main thread, one after another.
class MainQueue {
 public:
  using Block = std::function<void()>;

  virtual ~MainQueue() = default;

  /// Runs `block` on the main thread after every block posted before it, never inside this call. Any thread.
  /// Blocks still waiting when the process ends are dropped.
  virtual void async(Block block) = 0;

  /// Runs `block` on the main thread once `delay` has passed, in order of deadline, then of posting. Any
  /// thread. It cannot be cancelled, so a block must not own what may be gone by then; see `Lifetime`.
  virtual void asyncAfter(Seconds delay, Block block) = 0;

  /// Whether the caller is on the main thread. Any thread.
  virtual bool isMainThread() const = 0;

  /// Runs the main loop inside this call until the steady clock reaches `deadline`, including due blocks and
  /// input. Returns at once if the deadline has passed. Main thread.
  virtual void runUntil(Uptime deadline) = 0;
};

}  // namespace tavelo::platform
