#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace tavelo::recognition {

/// The lines that wait to be written. A text that nobody has read is replaced by a newer one, so a client
/// that reads slowly costs no memory. Any thread.
class Outbox final {
 public:
  /// A line that belongs to no dictation.
  void state(std::string line);

  /// From now on, lines of other dictations are dropped, also those that wait. 0 stands for none.
  void onlyOf(std::uint64_t serial);

  /// A line of a dictation that replaces its last replaceable one, if that waits.
  void replaceable(std::uint64_t serial, std::string line);

  /// A line of a dictation that must arrive. It takes the place of a replaceable one that waits.
  void lasting(std::uint64_t serial, std::string line);

  /// Writes lines as they come, until `write` returns false or `close` was called and all are written.
  void writeAll(const std::function<bool(std::string_view line)>& write);

  /// Nothing more comes.
  void close();

 private:
  struct Line {
    std::uint64_t serial = 0;
    bool replaceable = false;
    std::string text;
  };

  void add(Line line);

  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Line> lines_;
  std::uint64_t current_ = 0;
  bool closed_ = false;
};

}  // namespace tavelo::recognition
