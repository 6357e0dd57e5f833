// The rehearsal server's program. Its first line of output is the port; it runs until it is ended.

#include <QCoreApplication>
#include <cstdio>
#include <string>

#include <CLI/CLI.hpp>

#include "tools/rehearsal-server/RehearsalServer.h"

int main(int argc, char** argv) {
  tavelo::rehearsal::RehearsalServerOptions options;
  int delay = 0;
  int dropAfter = 0;
  CLI::App arguments{
      "Speaks a Vosk server's protocol on 127.0.0.1 and recognises nothing: it answers with a given "
      "transcript as sound arrives that is not silent."};
  arguments.add_option("--port", options.port, "The port; 0 takes a free one")->capture_default_str();
  auto* said = arguments.add_option_group("transcript")->require_option(1);
  said->add_option("--transcript", options.transcript, "What was said");
  said->add_option("--transcript-file", options.transcriptFile, "Where that stands, read for each client");
  arguments.add_option("--duration", options.duration, "Seconds of sound for the whole transcript")
      ->check(CLI::NonNegativeNumber)
      ->capture_default_str();
  arguments.add_option("--delay-ms", delay, "Answer that late")->check(CLI::Range(0, 60'000));
  const auto* drop =
      arguments.add_option("--drop-after", dropAfter, "Cut the connection after so many frames of sound")
          ->check(CLI::PositiveNumber);
  arguments.add_flag("--rubbish", options.rubbish, "Answer with broken JSON");
  arguments.add_flag("--arrays", options.arrays, "Answer with lists");
  arguments.add_flag("--no-config", options.noConfig, "Know neither settings nor reset");
  arguments.add_flag("--never-answer", options.neverAnswer, "Answer nothing");
  arguments.add_flag("--log", options.log, "Print a line for each client and each answer");
  CLI11_PARSE(arguments, argc, argv);
  options.delay = std::chrono::milliseconds{delay};
  if (drop->count() > 0) options.dropAfter = dropAfter;

  const QCoreApplication application(argc, argv);
  tavelo::rehearsal::RehearsalServer server(options);
  if (!server.listen()) {
    std::fprintf(stderr, "tavelo-rehearsal-server: %s\n", server.failure().c_str());
    return 1;
  }
  std::printf("%d\n", server.port());
  std::fflush(stdout);
  return QCoreApplication::exec();
}
