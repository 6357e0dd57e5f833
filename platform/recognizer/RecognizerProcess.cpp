#include "platform/recognizer/RecognizerProcess.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include <unistd.h>

#include "language/Language.h"
#include "language/Texts.h"

namespace tavelo::recognizer {
namespace {

using language::say;
namespace words = language::words;

using Clock = std::chrono::steady_clock;

constexpr std::size_t longestLine = std::size_t{1024} * 1024;
constexpr std::size_t longestLog = 2000;
/// A segment has a few hundred bytes and changes three times a second. This bounds a process that floods.
constexpr double mostAtOnce = 4.0 * 1024 * 1024;
constexpr double mostPerSecond = 256.0 * 1024;

void append(std::string& bytes, std::uint32_t number) {
  for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(number >> shift & 0xFF);
}

/// Reads once. Returns the count, 0 at the end of the stream, -1 when there is nothing now.
ssize_t readOnce(int descriptor, std::span<char> chunk) {
  const auto count = ::read(descriptor, chunk.data(), chunk.size());
  if (count < 0 && errno != EAGAIN && errno != EINTR) return 0;
  return count;
}

}  // namespace

std::unique_ptr<RecognizerProcess> RecognizerProcess::start(const RecognizerCommand& command,
                                                            std::string& failure) {
  auto child = posix::ChildProcess::start(command.program, command.arguments, failure);
  if (!child) return nullptr;
  return std::unique_ptr<RecognizerProcess>{new RecognizerProcess{std::move(child)}};
}

void RecognizerProcess::begin(std::uint32_t dictation, std::uint32_t sampleRate) {
  std::string payload;
  append(payload, dictation);
  append(payload, sampleRate);
  frame('B', payload);
}

void RecognizerProcess::sound(std::span<const std::int16_t> samples) {
  std::string payload;
  payload.reserve(samples.size_bytes());
  for (const auto sample : samples) {
    payload += static_cast<char>(sample & 0xFF);
    payload += static_cast<char>(sample >> 8 & 0xFF);
  }
  frame('S', payload);
}

void RecognizerProcess::frame(char kind, std::span<const char> payload) {
  outbox_ += kind;
  append(outbox_, static_cast<std::uint32_t>(payload.size()));
  outbox_.append(payload.data(), payload.size());
}

void RecognizerProcess::watch(std::vector<pollfd>& descriptors) const {
  descriptors.push_back({child_->output(), POLLIN, 0});
  if (!logEnded_) descriptors.push_back({child_->errors(), POLLIN, 0});
  if (!outbox_.empty()) descriptors.push_back({child_->input(), POLLOUT, 0});
}

bool RecognizerProcess::exchange(const Heard& heard) {
  readLog();
  // Read even if writing fails: its last lines say why it ended.
  const bool written = write();
  return read(heard) && written;
}

bool RecognizerProcess::write() {
  std::size_t sent = 0;
  bool alive = true;
  while (sent < outbox_.size()) {
    const auto count = ::write(child_->input(), outbox_.data() + sent, outbox_.size() - sent);
    if (count <= 0) {
      alive = errno == EAGAIN || errno == EINTR;
      break;
    }
    sent += static_cast<std::size_t>(count);
  }
  taken_ += sent;
  outbox_.erase(0, sent);
  return alive;
}

bool RecognizerProcess::read(const Heard& heard) {
  const auto now = Clock::now();
  const double passed = std::chrono::duration<double>(now - std::exchange(allowedAt_, now)).count();
  allowance_ = allowance_ == 0 ? mostAtOnce : std::min(mostAtOnce, allowance_ + passed * mostPerSecond);
  std::array<char, 65536> chunk{};
  const auto count = readOnce(child_->output(), chunk);
  if (count < 0) return true;
  if (count == 0) return false;
  allowance_ -= static_cast<double>(count);
  inbox_.append(chunk.data(), static_cast<std::size_t>(count));
  if (!hearLines(heard)) return false;
  if (inbox_.size() <= longestLine && allowance_ > 0) return true;
  broken_ = say(words::wroteTooMuch);
  return false;
}

bool RecognizerProcess::hearLines(const Heard& heard) {
  std::size_t begin = 0;
  for (auto end = inbox_.find('\n'); end != std::string::npos; end = inbox_.find('\n', begin)) {
    const auto reply = ProcessReply::parse(std::string_view{inbox_}.substr(begin, end - begin));
    if (!reply) {
      broken_ = say(words::wroteNoReplies);
      return false;
    }
    heard(*reply);
    begin = end + 1;
  }
  inbox_.erase(0, begin);
  return true;
}

void RecognizerProcess::readLog() {
  std::array<char, 4096> chunk{};
  // A bounded share of a turn, however much it writes.
  for (int i = 0; i < 16 && !logEnded_; ++i) {
    const auto count = readOnce(child_->errors(), chunk);
    if (count < 0) return;
    logEnded_ = count == 0;
    log_.append(chunk.data(), static_cast<std::size_t>(count));
    if (log_.size() > 2 * longestLog) log_.erase(0, log_.size() - longestLog);
  }
}

std::string RecognizerProcess::end(std::string reason) {
  const auto how = child_->end();
  readLog();
  if (reason.empty()) reason = broken_.empty() ? say(words::processFailed, {how}) : broken_;
  while (!log_.empty() && log_.back() == '\n') log_.pop_back();
  if (!log_.empty()) reason = say(words::logEndsWith, {reason, log_.substr(log_.rfind('\n') + 1)});
  return reason;
}

}  // namespace tavelo::recognizer
