#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace tavelo {

/// Says on standard error what a command waits for while the main thread can do nothing else. On a terminal a
/// line counts the seconds, from the first one on, and goes when this object does. Anywhere else one line
/// comes after 10 s.
class WaitingLine final {
 public:
  /// `what` is a few words, such as "Loading the model".
  explicit WaitingLine(std::string what);
  ~WaitingLine();
  WaitingLine(const WaitingLine&) = delete;
  WaitingLine& operator=(const WaitingLine&) = delete;

 private:
  void run();

  const std::string what_;
  std::mutex mutex_;
  std::condition_variable ended_;
  bool isOver_ = false;
  std::thread thread_;
};

}  // namespace tavelo
