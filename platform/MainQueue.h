#pragma once

#include <functional>

#include "platform/Time.h"

namespace tavelo::platform {

/// The queue of blocks that run one after another on the main thread.
class MainQueue {
 public:
  using Block = std::function<void()>;

  virtual ~MainQueue() = default;

  /// Runs `block` on the main thread, never inside this call, after every block posted before it. Any thread.
  /// A block that the loop no longer comes to before the process ends is dropped.
  virtual void async(Block block) = 0;

  /// Runs `block` on the main thread once `delay` has passed: in order of deadline, then of posting. Any
  /// thread. There is no way to cancel; a block that may come too late holds what it needs weakly.
  virtual void asyncAfter(Seconds delay, Block block) = 0;

  /// Whether the caller is on the main thread. Any thread.
  virtual bool isMainThread() const = 0;

  /// Runs the main loop, nested in the caller, until the steady clock reaches `deadline`; blocks and input
  /// that fall due run inside it. Returns at once when the deadline has passed. Main thread only.
  virtual void runUntil(Uptime deadline) = 0;
};

}  // namespace tavelo::platform
