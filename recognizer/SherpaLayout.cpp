#include "recognizer/SherpaLayout.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <string_view>

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include "language/Language.h"
#include "language/Texts.h"
#include "recognizer/SherpaLibrary.h"

namespace tavelo::recognition::sherpa {
namespace {

using language::say;
namespace words = language::words;

constexpr std::chrono::seconds patience{5};
constexpr std::size_t mostOutput = 64UL * 1024;

/// What a library prints that reads every member that we set, in both structures.
constexpr std::array<std::string_view, 17> expected{
    "sampling_rate=16001, feature_dim=81",
    R"(encoder_filename="off.enc", decoder_filename="off.dec", joiner_filename="off.join")",
    R"(tokens="off.tok", num_threads=7, debug=True)",
    R"(provider="off.prov")",
    R"(model_type="off.type")",
    "sampling_rate=16003, feature_dim=83",
    R"(encoder="on.enc", decoder="on.dec", joiner="on.join")",
    R"(tokens="on.tok", num_threads=9)",
    R"(provider="on.prov")",
    R"(model_type="on.type")",
    R"(decoding_method="on.method")",
    "max_active_paths=5",
    "enable_endpoint=True",
    "min_trailing_silence=1.25",
    "min_trailing_silence=2.5",
    "min_utterance_length=13",
    "debug=True"};

/// In the child: has the library print its view of both structures. The files do not exist, so nothing is
/// loaded.
void printMarks(const Functions& library) {
  Padded<OfflineConfig> offline{};
  offline.config.sampleRate = 16001;
  offline.config.featureDimension = 81;
  offline.config.transducer = {"off.enc", "off.dec", "off.join"};
  offline.config.tokens = "off.tok";
  offline.config.threads = 7;
  offline.config.debug = 1;
  offline.config.provider = "off.prov";
  offline.config.modelType = "off.type";
  guarded([&] { library.createOffline(&offline.config); });
  Padded<OnlineConfig> online{};
  online.config.sampleRate = 16003;
  online.config.featureDimension = 83;
  online.config.transducer = {"on.enc", "on.dec", "on.join"};
  online.config.tokens = "on.tok";
  online.config.threads = 9;
  online.config.provider = "on.prov";
  online.config.debug = 1;
  online.config.modelType = "on.type";
  online.config.decodingMethod = "on.method";
  online.config.activePaths = 5;
  online.config.endpoints = 1;
  online.config.silenceWithoutWords = 1.25F;
  online.config.silenceAfterWords = 2.5F;
  online.config.longestSegment = 13;
  guarded([&] { library.createOnline(&online.config); });
}

/// What comes out of a pipe until its end, within our patience.
std::string readAll(int pipe) {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  std::string all;
  std::array<char, 4096> piece{};
  while (all.size() < mostOutput) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    pollfd readable{pipe, POLLIN, 0};
    if (left.count() <= 0 || poll(&readable, 1, static_cast<int>(left.count())) == 0) break;
    const auto count = read(pipe, piece.data(), piece.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    all.append(piece.data(), static_cast<std::size_t>(count));
  }
  return all;
}

}  // namespace

std::string confirmLayout(const Functions& library) {
  std::array<int, 2> pipe{};
  if (::pipe(pipe.data()) != 0) return say(words::noPipe);
  const pid_t child = fork();
  if (child == 0) {
    dup2(pipe[1], STDOUT_FILENO);
    dup2(pipe[1], STDERR_FILENO);
    close(pipe[0]);
    close(pipe[1]);
    printMarks(library);
    _exit(0);
  }
  close(pipe[1]);
  const std::string printed = child > 0 ? readAll(pipe[0]) : std::string{};
  close(pipe[0]);
  if (child < 0) return say(words::noProcess);
  kill(child, SIGKILL);
  while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
  }
  for (const auto mark : expected)
    if (printed.find(mark) == std::string::npos) return say(words::otherLayout);
  return {};
}

}  // namespace tavelo::recognition::sherpa
