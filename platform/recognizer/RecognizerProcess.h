#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include <poll.h>

#include "platform/posix/ChildProcess.h"
#include "platform/recognizer/ProcessReply.h"

namespace tavelo::recognizer {

/// How to start the recogniser process for one model. A plain value.
struct RecognizerCommand {
  std::filesystem::path program;
  std::vector<std::string> arguments;
};

/// A running recogniser process: frames to it, lines from it. Never waits. One thread, which must block
/// SIGPIPE.
class RecognizerProcess final {
 public:
  using Heard = std::function<void(const ProcessReply&)>;

  /// Null if the process cannot be started; then `failure` says why.
  static std::unique_ptr<RecognizerProcess> start(const RecognizerCommand& command, std::string& failure);

  void begin(std::uint32_t dictation, std::uint32_t sampleRate);
  /// At most 16,000 samples.
  void sound(std::span<const std::int16_t> samples);
  void endSound() { frame('E', {}); }
  void giveUp() { frame('C', {}); }

  /// How many bytes the process has not taken yet.
  std::size_t unsent() const { return outbox_.size(); }

  /// How many bytes it has taken so far.
  std::uint64_t taken() const { return taken_; }

  /// The end of what it wrote to standard error.
  const std::string& log() const { return log_; }

  /// Adds what the thread must wait for.
  void watch(std::vector<pollfd>& descriptors) const;

  /// Writes and reads what is possible now. Returns false if the process has ended or broken the protocol:
  /// a line that is too long or no reply, or far more lines than a dictation can have.
  bool exchange(const Heard& heard);

  /// Ends the process. Returns what went wrong: its own words, or how it ended, with the end of its log.
  std::string end(std::string reason = {});

 private:
  explicit RecognizerProcess(std::unique_ptr<posix::ChildProcess> child) : child_(std::move(child)) {}

  void frame(char kind, std::span<const char> payload);
  bool write();
  bool read(const Heard& heard);
  bool hearLines(const Heard& heard);
  void readLog();

  std::unique_ptr<posix::ChildProcess> child_;
  std::string outbox_;
  std::string inbox_;
  std::string log_;
  bool logEnded_ = false;
  std::string broken_;
  std::uint64_t taken_ = 0;
  /// How many more bytes it may write now; grows with time.
  double allowance_ = 0;
  std::chrono::steady_clock::time_point allowedAt_ = std::chrono::steady_clock::now();
};

}  // namespace tavelo::recognizer
