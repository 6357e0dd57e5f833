#include "commands/WaitingLine.h"

#include <chrono>
#include <cstdio>
#include <system_error>
#include <utility>

#include <unistd.h>

namespace tavelo {

WaitingLine::WaitingLine(std::string what) : what_(std::move(what)) {
  try {
    thread_ = std::thread([this] { run(); });
  } catch (const std::system_error&) {
    // Then nothing is said.
  }
}

WaitingLine::~WaitingLine() {
  {
    const std::lock_guard lock{mutex_};
    isOver_ = true;
  }
  ended_.notify_all();
  if (thread_.joinable()) thread_.join();
}

void WaitingLine::run() {
  constexpr int lateSeconds = 10;
  const bool isTerminal = ::isatty(STDERR_FILENO) == 1;
  std::unique_lock lock{mutex_};
  int seconds = 0;
  while (!ended_.wait_for(lock, std::chrono::seconds{1}, [this] { return isOver_; })) {
    ++seconds;
    if (isTerminal) {
      std::fprintf(stderr, "\r\x1b[K%s, %d s", what_.c_str(), seconds);
    } else if (seconds == lateSeconds) {
      std::fprintf(stderr, "tavelo: %s; this may take minutes\n", what_.c_str());
    }
  }
  if (isTerminal && seconds > 0) std::fputs("\r\x1b[K", stderr);
}

}  // namespace tavelo
