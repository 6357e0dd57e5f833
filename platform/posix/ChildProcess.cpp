#include "platform/posix/ChildProcess.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "language/Language.h"
#include "language/SystemErrors.h"
#include "language/Texts.h"

extern "C" char** environ;

namespace tavelo::posix {
namespace {

using language::say;
namespace words = language::words;

/// What the new process starts with: our three pipes, and no signal blocked or ignored.
class SpawnSettings final {
 public:
  SpawnSettings(int input, int output, int errors) {
    posix_spawn_file_actions_init(&actions_);
    posix_spawn_file_actions_adddup2(&actions_, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions_, errors, STDERR_FILENO);
    posix_spawnattr_init(&attributes_);
    sigset_t none;
    sigset_t usual;
    sigemptyset(&none);
    sigemptyset(&usual);
    for (const int each : {SIGPIPE, SIGINT, SIGTERM, SIGHUP}) sigaddset(&usual, each);
    posix_spawnattr_setsigmask(&attributes_, &none);
    posix_spawnattr_setsigdefault(&attributes_, &usual);
    posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  }
  ~SpawnSettings() {
    posix_spawn_file_actions_destroy(&actions_);
    posix_spawnattr_destroy(&attributes_);
  }
  SpawnSettings(const SpawnSettings&) = delete;
  SpawnSettings& operator=(const SpawnSettings&) = delete;

  const posix_spawn_file_actions_t* actions() const { return &actions_; }
  const posix_spawnattr_t* attributes() const { return &attributes_; }

 private:
  posix_spawn_file_actions_t actions_{};
  posix_spawnattr_t attributes_{};
};

}  // namespace

Pipe Pipe::open() {
  std::array<int, 2> ends{-1, -1};
  if (pipe(ends.data()) != 0) return {FileDescriptor{}, FileDescriptor{}};
  for (const int each : ends) fcntl(each, F_SETFD, FD_CLOEXEC);
  return {FileDescriptor{ends[0]}, FileDescriptor{ends[1]}};
}

void makeNonBlocking(int descriptor) { fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) | O_NONBLOCK); }

std::unique_ptr<ChildProcess> ChildProcess::start(const std::filesystem::path& program,
                                                  const std::vector<std::string>& arguments,
                                                  std::string& failure) {
  auto input = Pipe::open();
  auto output = Pipe::open();
  auto errors = Pipe::open();
  if (!errors.readEnd) {
    failure = say(words::noDescriptors);
    return nullptr;
  }
  std::vector<std::string> words{program.string()};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (auto& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);

  std::unique_ptr<ChildProcess> child{new ChildProcess};
  const SpawnSettings settings{input.readEnd.get(), output.writeEnd.get(), errors.writeEnd.get()};
  const int error = posix_spawn(&child->process_, program.c_str(), settings.actions(), settings.attributes(),
                                pointers.data(), environ);
  if (error != 0) {
    child->process_ = 0;
    failure = program.string() + ": " + language::systemError(error);
    return nullptr;
  }
  child->input_ = std::move(input.writeEnd);
  child->output_ = std::move(output.readEnd);
  child->errors_ = std::move(errors.readEnd);
  for (const int each : {child->input(), child->output(), child->errors()}) makeNonBlocking(each);
  return child;
}

ChildProcess::~ChildProcess() { end(); }

std::string ChildProcess::end() {
  if (process_ == 0) return {};
  int status = 0;
  const pid_t process = std::exchange(process_, 0);
  bool killed = false;
  if (waitpid(process, &status, WNOHANG) == 0) {
    killed = kill(process, SIGKILL) == 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
  }
  input_.close();
  if (WIFEXITED(status)) return say(words::endedWithStatus, {std::to_string(WEXITSTATUS(status))});
  return killed ? say(words::wasEnded) : say(words::endedBySignal, {std::to_string(WTERMSIG(status))});
}

}  // namespace tavelo::posix
