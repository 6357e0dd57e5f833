#pragma once

#include <functional>
#include <memory>

#include "platform/MainQueue.h"

namespace tavelo {

namespace simulated {
class RealTimeLoop;
}

/// A main loop for a command that waits for answers. The thread that makes it is the main thread.
class CommandLoop final {
 public:
  CommandLoop();
  ~CommandLoop();
  CommandLoop(const CommandLoop&) = delete;
  CommandLoop& operator=(const CommandLoop&) = delete;

  platform::MainQueue& mainQueue();

  /// Runs blocks, and waits for more, until the condition holds; it is checked after each block.
  void runUntil(const std::function<bool()>& condition);

 private:
  const std::unique_ptr<simulated::RealTimeLoop> loop_;
};

}  // namespace tavelo
