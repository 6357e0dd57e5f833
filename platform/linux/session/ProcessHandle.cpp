#include "platform/linux/session/ProcessHandle.h"

#include <cerrno>
#include <csignal>
#include <fstream>
#include <iterator>
#include <string>

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace tavelo::linuxdesktop {
namespace {

bool exists(platform::ProcessIdentifier process) { return ::kill(process, 0) == 0 || errno == EPERM; }

}  // namespace

ProcessHandle::ProcessHandle(platform::ProcessIdentifier process) : process_(process) {
  descriptor_ = process > 0 ? static_cast<int>(::syscall(SYS_pidfd_open, process, 0)) : -1;
  ended_ = descriptor_ < 0 && (process <= 0 || !exists(process));
}

ProcessHandle::~ProcessHandle() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

bool ProcessHandle::hasEnded() const {
  if (ended_) return true;
  if (descriptor_ >= 0) {
    pollfd ready{.fd = descriptor_, .events = POLLIN, .revents = 0};
    ended_ = ::poll(&ready, 1, 0) > 0;
  } else {
    // There is no descriptor: a sandbox may refuse it.
    ended_ = !exists(process_);
  }
  return ended_;
}

bool isStopped(platform::ProcessIdentifier process) {
  std::ifstream stream("/proc/" + std::to_string(process) + "/stat", std::ios::binary);
  const std::string line{std::istreambuf_iterator<char>(stream), {}};
  // The state follows the program's name, which is in parentheses and may contain anything.
  const auto name = line.rfind(") ");
  return name != std::string::npos && name + 2 < line.size() &&
         (line[name + 2] == 'T' || line[name + 2] == 't');
}

}  // namespace tavelo::linuxdesktop
