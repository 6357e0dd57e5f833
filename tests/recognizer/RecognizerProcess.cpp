#include "tests/recognizer/RecognizerProcess.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tavelo::recognition {
namespace {

constexpr int patience = 30'000;

std::string number(std::uint32_t value) {
  std::string bytes;
  for (int i = 0; i < 4; ++i) bytes += static_cast<char>(value >> (8 * i) & 0xFFU);
  return bytes;
}

}  // namespace

RecognizerProcess::RecognizerProcess(const std::string& model, const std::string& library,
                                     const std::map<std::string, std::string>& environment) {
  std::signal(SIGPIPE, SIG_IGN);
  std::array<int, 2> in{};
  std::array<int, 2> out{};
  if (pipe2(in.data(), O_CLOEXEC) != 0 || pipe2(out.data(), O_CLOEXEC) != 0) std::abort();
  process_ = fork();
  if (process_ == 0) {
    dup2(in[0], STDIN_FILENO);
    dup2(out[1], STDOUT_FILENO);
    for (const auto& [name, value] : environment) setenv(name.c_str(), value.c_str(), 1);
    execl(TAVELO_RECOGNIZER_PROGRAM, "tavelo-recognizer", "--model", model.c_str(), "--library",
          library.c_str(), nullptr);
    _exit(127);
  }
  close(in[0]);
  close(out[1]);
  input_ = in[1];
  output_ = out[0];
}

RecognizerProcess::~RecognizerProcess() {
  closeInput();
  close(output_);
  if (process_ > 0 && waitpid(process_, nullptr, WNOHANG) == 0) {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
}

void RecognizerProcess::send(char kind, const std::string& payload) {
  std::string bytes = kind + number(static_cast<std::uint32_t>(payload.size())) + payload;
  while (!bytes.empty()) {
    const auto count = write(input_, bytes.data(), bytes.size());
    if (count <= 0) return;
    bytes.erase(0, static_cast<std::size_t>(count));
  }
}

void RecognizerProcess::begin(std::uint32_t dictation, std::uint32_t sampleRate) {
  send('B', number(dictation) + number(sampleRate));
}

std::string RecognizerProcess::line() {
  std::array<char, 4096> piece{};
  auto end = unread_.find('\n');
  while (end == std::string::npos) {
    pollfd readable{output_, POLLIN, 0};
    const auto count = poll(&readable, 1, patience) > 0 ? read(output_, piece.data(), piece.size()) : 0;
    if (count <= 0) return {};
    unread_.append(piece.data(), static_cast<std::size_t>(count));
    end = unread_.find('\n');
  }
  std::string line = unread_.substr(0, end);
  unread_.erase(0, end + 1);
  return line;
}

std::vector<std::string> RecognizerProcess::linesUntil(const std::string& mark) {
  std::vector<std::string> lines;
  for (auto next = line(); !next.empty(); next = line()) {
    lines.push_back(next);
    if (next.find(mark) != std::string::npos) break;
  }
  return lines;
}

void RecognizerProcess::closeInput() {
  if (input_ >= 0) close(std::exchange(input_, -1));
}

int RecognizerProcess::status() {
  int status = 0;
  // The output ends with the process; there is nothing else to wait for without a signal.
  while (!line().empty()) {
  }
  pollfd ended{output_, 0, 0};
  poll(&ended, 1, patience);
  if ((ended.revents & POLLHUP) == 0) kill(process_, SIGABRT);
  waitpid(std::exchange(process_, -1), &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

}  // namespace tavelo::recognition
