#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include <sys/socket.h>
#include <sys/un.h>

#include "platform/posix/FileDescriptor.h"

namespace tavelo::posix {

/// The longest line that either side of a local socket sends or accepts, with its line feed, in bytes.
inline constexpr std::size_t longestLine = 64;

/// Owns `descriptor`, which no child process inherits from now on and which never waits. No descriptor if it
/// is none.
FileDescriptor unwaiting(int descriptor);

/// Makes a local stream socket like that. No descriptor if the process has none left.
FileDescriptor localSocket();

/// Sends what the socket takes now, and returns how much, or -1 with errno as `send`. A peer that has gone is
/// an error and no signal, which would end the process.
ssize_t sendQuietly(const FileDescriptor& socket, std::string_view text);

/// The address of a socket in the file system; absent if the path is too long for one (about 100 bytes).
std::optional<sockaddr_un> localAddress(const std::string& path);

/// `address` as the socket calls take it.
inline const sockaddr* generic(const sockaddr_un& address) {
  return reinterpret_cast<const sockaddr*>(&address);
}

}  // namespace tavelo::posix
