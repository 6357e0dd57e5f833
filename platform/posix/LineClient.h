#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

namespace tavelo::posix {

/// What became of a line sent to a `LineServer`.
struct LineAnswer {
  enum class Outcome : std::uint8_t {
    answered,
    /// Nobody listens.
    nobody,
    /// Something listens, but did not answer in time, or answered too much.
    silent,
  };
  Outcome outcome = Outcome::silent;
  /// All that the other side sent until it closed the connection.
  std::string text;
};

/// The longest answer that is accepted, in bytes.
inline constexpr std::size_t longestAnswer = 65536;

/// Sends `line`, which ends with a line feed, to the socket at `path`, and waits for the answer, for
/// `patience` at most. With `waitsForListener`, it also waits that long for somebody to listen. Any thread.
LineAnswer askLine(const std::string& path, const std::string& line, std::chrono::milliseconds patience,
                   bool waitsForListener);

}  // namespace tavelo::posix
