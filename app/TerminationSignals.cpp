#include "app/TerminationSignals.h"

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace tavelo {
namespace {

constexpr std::array handledSignals{SIGTERM, SIGINT};

/// What goes through the pipe.
constexpr char signalCame = 's';
constexpr char theEnd = 'e';

/// The end of the pipe that the handler writes to. The handler may touch nothing else.
std::atomic<int> writingEnd{-1};
static_assert(std::atomic<int>::is_always_lock_free);

void put(int descriptor, char what) {
  // If the pipe is full, the thread has enough to read.
  [[maybe_unused]] const auto written = ::write(descriptor, &what, sizeof what);
}

extern "C" void wakeThread(int) {
  const int before = errno;
  put(writingEnd, signalCame);
  errno = before;
}

/// Waits for what comes through the pipe. `theEnd` if the pipe fails.
char take(int descriptor) {
  char what = theEnd;
  while (::read(descriptor, &what, sizeof what) < 0 && errno == EINTR) {
  }
  return what;
}

}  // namespace

TerminationSignals::TerminationSignals(platform::MainQueue& mainQueue, std::function<void()> terminate) {
  if (::pipe(pipe_.data()) != 0) {
    pipe_ = {-1, -1};
    return;
  }
  for (const int end : pipe_) ::fcntl(end, F_SETFD, FD_CLOEXEC);
  ::fcntl(pipe_[1], F_SETFL, O_NONBLOCK);
  thread_ = std::thread([&mainQueue, terminate = std::move(terminate), reading = pipe_[0]] {
    while (take(reading) == signalCame) mainQueue.async(terminate);
  });
  writingEnd = pipe_[1];
  struct sigaction action {};
  action.sa_handler = wakeThread;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  for (std::size_t i = 0; i < handledSignals.size(); ++i)
    ::sigaction(handledSignals[i], &action, &before_[i]);
}

TerminationSignals::~TerminationSignals() {
  if (!thread_.joinable()) return;
  for (std::size_t i = 0; i < handledSignals.size(); ++i)
    ::sigaction(handledSignals[i], &before_[i], nullptr);
  writingEnd = -1;
  put(pipe_[1], theEnd);
  thread_.join();
  for (const int end : pipe_) ::close(end);
}

}  // namespace tavelo
