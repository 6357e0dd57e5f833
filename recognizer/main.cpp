#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

#include "recognizer/FrameReader.h"
#include "recognizer/Inbox.h"
#include "recognizer/LoadEngine.h"
#include "recognizer/Outbox.h"
#include "recognizer/Session.h"

namespace {

using namespace tavelo::recognition;

constexpr int failed = 1;
constexpr int wrongUsage = 2;

struct Options {
  std::string model;
  std::string library;
};

std::optional<Options> readOptions(int count, char** arguments) {
  Options options;
  for (int i = 1; i + 1 < count; i += 2) {
    const std::string_view name = arguments[i];
    if (name == "--model")
      options.model = arguments[i + 1];
    else if (name == "--library")
      options.library = arguments[i + 1];
    else
      return std::nullopt;
  }
  if (count % 2 == 0 || options.model.empty()) return std::nullopt;
  return options;
}

/// The standard output, for our lines alone: what a library prints there goes to standard error.
int takeOutput() {
  const int output = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  dup2(STDERR_FILENO, STDOUT_FILENO);
  return output;
}

/// Writes a line. Nobody listens any more when that fails, so the process ends.
bool write(int descriptor, std::string_view line) {
  while (!line.empty()) {
    const auto count = ::write(descriptor, line.data(), line.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) _exit(0);
    line.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

/// The status with which the end of the input ends the process.
std::atomic<int> statusAtEnd{0};

/// The end of the input ends the process, whatever the library is doing: it cannot be stopped in a load or a
/// decode.
void readInput(Inbox& inbox) {
  const int status = readFrames(STDIN_FILENO, inbox);
  if (status != 0) std::fputs("tavelo-recognizer: bad frame\n", stderr);
  _exit(status != 0 ? status : statusAtEnd.load());
}

}  // namespace

int main(int count, char** arguments) {
  const auto options = readOptions(count, arguments);
  if (!options) {
    std::fputs("usage: tavelo-recognizer --model FOLDER [--library FILE]\n", stderr);
    return wrongUsage;
  }
  std::signal(SIGPIPE, SIG_IGN);
  const int output = takeOutput();
  // They live as long as the process, since its threads use them to the last.
  static Outbox outbox;
  static Inbox inbox{outbox};
  outbox.state(loadingLine());
  std::thread writer{
      [output] { outbox.writeAll([output](std::string_view line) { return write(output, line); }); }};
  std::thread{[] { readInput(inbox); }}.detach();

  const auto loading = loadEngine(options->model, options->library);
  if (!loading.engine) {
    statusAtEnd = failed;
    outbox.state(failedLine(loading.failure));
    outbox.close();
    writer.join();
    _exit(failed);
  }
  outbox.state(readyLine(*loading.engine));
  Session session{*loading.engine, inbox, outbox};
  for (;;) session.step();
}
