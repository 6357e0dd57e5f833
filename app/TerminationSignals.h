#pragma once

#include <array>
#include <csignal>
#include <functional>
#include <thread>

#include "platform/MainQueue.h"

namespace tavelo {

/// Lets SIGTERM and SIGINT end the program in an orderly way. The destructor restores the earlier handlers.
/// At most one object at a time; main thread.
class TerminationSignals final {
 public:
  /// `terminate` is called on the main queue, which must outlive this. If the system has no file descriptors
  /// left, the signals keep their earlier effect.
  TerminationSignals(platform::MainQueue& mainQueue, std::function<void()> terminate);
  ~TerminationSignals();
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;

 private:
  std::array<int, 2> pipe_{-1, -1};
  std::array<struct sigaction, 2> before_{};
  /// Sleeps until a signal comes.
  std::thread thread_;
};

}  // namespace tavelo
