#include "commands/WaitingLine.h"

#include <chrono>
#include <cstdio>
#include <system_error>
#include <utility>

#include <unistd.h>

#include "language/Language.h"
#include "language/Texts.h"

namespace tavelo {

using language::say;
namespace words = language::words;

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
      const auto line = say(words::waitingFor, {what_, std::to_string(seconds)});
      std::fprintf(stderr, "\r\x1b[K%s", line.c_str());
    } else if (seconds == lateSeconds) {
      std::fprintf(stderr, "tavelo: %s\n", say(words::mayTakeMinutes, {what_}).c_str());
    }
  }
  if (isTerminal && seconds > 0) std::fputs("\r\x1b[K", stderr);
}

}  // namespace tavelo
