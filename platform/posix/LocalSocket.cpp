#include "platform/posix/LocalSocket.h"

#include <fcntl.h>

namespace tavelo::posix {

FileDescriptor unwaiting(int descriptor) {
  FileDescriptor result(descriptor);
  if (!result) return result;
  // Not every system can set these while it makes the descriptor.
  fcntl(descriptor, F_SETFD, FD_CLOEXEC);
  fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) | O_NONBLOCK);
  return result;
}

FileDescriptor localSocket() { return unwaiting(::socket(AF_UNIX, SOCK_STREAM, 0)); }

ssize_t sendQuietly(const FileDescriptor& socket, std::string_view text) {
  // Each system has one of the two ways.
#ifdef SO_NOSIGPIPE
  const int on = 1;
  ::setsockopt(socket.get(), SOL_SOCKET, SO_NOSIGPIPE, &on, sizeof on);
  return ::send(socket.get(), text.data(), text.size(), 0);
#else
  return ::send(socket.get(), text.data(), text.size(), MSG_NOSIGNAL);
#endif
}

std::optional<sockaddr_un> localAddress(const std::string& path) {
  sockaddr_un address{};
  if (path.size() >= sizeof address.sun_path) return std::nullopt;
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, path.size());
  return address;
}

}  // namespace tavelo::posix
