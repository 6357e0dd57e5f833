#include "platform/posix/LineClient.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <thread>

#include <poll.h>
#include <unistd.h>

#include "platform/posix/FileDescriptor.h"
#include "platform/posix/LocalSocket.h"

namespace tavelo::posix {
namespace {

using Outcome = LineAnswer::Outcome;
using SteadyTime = std::chrono::steady_clock::time_point;

/// Time between two attempts to reach a program that is still starting.
constexpr std::chrono::milliseconds retryInterval{20};

/// Waits until the socket is ready; false when the time is up.
bool wait(const FileDescriptor& socket, short events, SteadyTime deadline) {
  for (;;) {
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    pollfd ready{socket.get(), events, 0};
    const int count = ::poll(&ready, 1, static_cast<int>(std::max<std::int64_t>(left.count(), 0)));
    if (count >= 0 || errno != EINTR) return count > 0;
  }
}

bool connect(const FileDescriptor& socket, const sockaddr_un& address) {
  // A local socket connects at once or, if too many wait already, not now.
  return socket && ::connect(socket.get(), generic(address), sizeof address) == 0;
}

LineAnswer exchange(const FileDescriptor& socket, const std::string& line, SteadyTime deadline) {
  // A line is short: an empty socket takes it whole.
  if (sendQuietly(socket, line) != static_cast<ssize_t>(line.size())) return {};
  LineAnswer answer;
  std::array<char, 4096> piece{};
  while (wait(socket, POLLIN, deadline)) {
    const auto count = ::recv(socket.get(), piece.data(), piece.size(), 0);
    if (count == 0 && !answer.text.empty()) answer.outcome = Outcome::answered;
    if (count == 0 || (count < 0 && errno != EINTR && errno != EAGAIN)) return answer;
    if (count > 0) answer.text.append(piece.data(), static_cast<std::size_t>(count));
    if (answer.text.size() > longestAnswer) return answer;
  }
  return answer;
}

}  // namespace

LineAnswer askLine(const std::string& path, const std::string& line, std::chrono::milliseconds patience,
                   bool waitsForListener) {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  const auto address = localAddress(path);
  if (!address) return {.outcome = Outcome::nobody, .text = {}};
  for (;;) {
    const FileDescriptor socket = localSocket();
    if (connect(socket, *address)) return exchange(socket, line, deadline);
    if (!waitsForListener || std::chrono::steady_clock::now() >= deadline)
      return {.outcome = Outcome::nobody, .text = {}};
    std::this_thread::sleep_for(retryInterval);
  }
}

}  // namespace tavelo::posix
