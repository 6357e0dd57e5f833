// Holds many dictations at once, in real time, against a Vosk server or a farm of them, with the program's
// own client. It prints how much later than in a lone dictation the words came, how long the final transcript
// took, and how many words were lost. The status is 1 when a dictation failed or was not whole.

#include <QCoreApplication>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include <CLI/CLI.hpp>

#include "platform/posix/SystemClock.h"
#include "platform/qt/QtMainQueue.h"
#include "platform/recognizer/server/VoskServerSpeech.h"
#include "recordings/Recording.h"
#include "tools/load/Load.h"

namespace tavelo::load {
namespace {

struct Arguments {
  std::string address;
  std::string recording;
  std::size_t dictations = 50;
  double seconds = 30;
};

std::string milliseconds(std::vector<double> values, double share) {
  if (values.empty()) return "-";
  std::sort(values.begin(), values.end());
  const auto last = static_cast<double>(values.size() - 1);
  return std::to_string(std::lround(values[static_cast<std::size_t>(share * last)] * 1000));
}

void printTimes(const char* what, const std::vector<double>& values) {
  std::printf("%s: median %s ms, 95 percent within %s ms, at most %s ms\n", what,
              milliseconds(values, 0.5).c_str(), milliseconds(values, 0.95).c_str(),
              milliseconds(values, 1).c_str());
}

void print(const Tally& tally) {
  std::printf("dictations: %zu, failed %zu\n", tally.dictations, tally.failed);
  std::printf("words: %zu, lost %zu, too many %zu\n", tally.wordsExpected, tally.wordsLost,
              tally.wordsTooMany);
  printTimes("words later than in a lone dictation", tally.wordsLater);
  printTimes("end of the sound to the final transcript", tally.finalAfter);
  if (!tally.error.empty()) std::printf("first error: %s\n", tally.error.c_str());
}

int run(const Arguments& arguments, std::vector<std::int16_t> samples) {
  const posix::SystemClock clock;
  qt::QtMainQueue mainQueue{clock};
  recognizer::VoskServerSpeech speech{mainQueue, arguments.address};
  SoundPlayer player{std::move(samples)};
  const auto makeDictation = [&] { return std::make_shared<Dictation>(mainQueue, clock, speech, player); };

  Outcome lone;
  makeDictation()->begin([&](const Outcome& outcome) {
    lone = outcome;
    QCoreApplication::quit();
  });
  QCoreApplication::exec();
  if (!lone.error.empty() || lone.text.empty()) {
    std::fprintf(stderr, "tavelo_load: the lone dictation failed: %s\n",
                 lone.error.empty() ? "nothing was heard" : lone.error.c_str());
    return 1;
  }
  std::printf("a lone dictation: %s (final after %.0f ms)\n", lone.text.c_str(),
              lone.finalAfter.count() * 1000);
  std::fflush(stdout);

  Load load{mainQueue, makeDictation, lone};
  int status = 1;
  load.hold(arguments.dictations, player.duration(), platform::Seconds{arguments.seconds},
            [&](const Tally& tally) {
              print(tally);
              status = tally.isWhole() ? 0 : 1;
              QCoreApplication::quit();
            });
  QCoreApplication::exec();
  return status;
}

}  // namespace
}  // namespace tavelo::load

int main(int argc, char** argv) {
  using namespace tavelo;
  load::Arguments arguments;
  CLI::App options{"Holds many dictations at once, in real time, against a Vosk server or a farm."};
  options.add_option("address", arguments.address, "ws://host:port or wss://host:port")->required();
  options.add_option("recording", arguments.recording, "What is said: WAV")->required();
  options.add_option("--dictations", arguments.dictations, "How many at once")
      ->check(CLI::Range(1, 2000))
      ->capture_default_str();
  options.add_option("--seconds", arguments.seconds, "How long new ones begin")
      ->check(CLI::PositiveNumber)
      ->capture_default_str();
  CLI11_PARSE(options, argc, argv);

  const auto opening = recordings::Recording::open(arguments.recording);
  if (!opening.recording) {
    std::fprintf(stderr, "tavelo_load: %s: %s\n", arguments.recording.c_str(), opening.failure.c_str());
    return 1;
  }
  const QCoreApplication application(argc, argv);
  return load::run(arguments, opening.recording->readAll());
}
