#include "app/DesktopSignals.h"

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <utility>

#include <sys/socket.h>
#include <unistd.h>

namespace tavelo {
namespace {

constexpr std::array handledSignals{SIGTERM, SIGINT};

/// The socket that the handler writes to. The handler may touch nothing else.
std::atomic<int> writingEnd{-1};
static_assert(std::atomic<int>::is_always_lock_free);

extern "C" void wakeEventLoop(int) {
  const int before = errno;
  const char something = 0;
  ::send(writingEnd, &something, sizeof something, MSG_DONTWAIT | MSG_NOSIGNAL);
  errno = before;
}

}  // namespace

DesktopSignals::DesktopSignals(std::function<void()> terminate) {
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets_.data()) != 0) {
    sockets_ = {-1, -1};
    return;
  }
  notifier_.emplace(sockets_[0], QSocketNotifier::Read);
  QObject::connect(&*notifier_, &QSocketNotifier::activated, &*notifier_,
                   [this, terminate = std::move(terminate)] {
                     char something = 0;
                     if (::recv(sockets_[0], &something, sizeof something, MSG_DONTWAIT) == 1) terminate();
                   });
  writingEnd = sockets_[1];
  struct sigaction action {};
  action.sa_handler = wakeEventLoop;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  for (std::size_t i = 0; i < handledSignals.size(); ++i)
    ::sigaction(handledSignals[i], &action, &before_[i]);
}

DesktopSignals::~DesktopSignals() {
  if (!notifier_) return;
  for (std::size_t i = 0; i < handledSignals.size(); ++i)
    ::sigaction(handledSignals[i], &before_[i], nullptr);
  writingEnd = -1;
  notifier_.reset();
  for (const int socket : sockets_) ::close(socket);
}

}  // namespace tavelo
