// The rehearsal server: speaks the Vosk servers' protocol on the loopback address, but recognises nothing. It
// answers with a given transcript, word by word as sound arrives. For tests and demonstrations. It prints its
// port as the first line, and runs until it is killed.

#include <QCoreApplication>
#include <QHostAddress>
#include <QWebSocketServer>
#include <chrono>
#include <cstdio>
#include <string>

#include <CLI/CLI.hpp>

#include "tools/rehearsal-server/RehearsalServerOptions.h"
#include "tools/rehearsal-server/RehearsalSession.h"

int main(int argc, char** argv) {
  tavelo::rehearsal::RehearsalServerOptions options;
  int delay = 0;
  int dropAfter = 0;
  CLI::App arguments{
      "Speaks a Vosk server's protocol on 127.0.0.1, but recognises nothing. It answers with a given "
      "transcript, word by word as sound arrives that is not silent."};
  arguments.add_option("--port", options.port, "The port; 0 takes a free one")->capture_default_str();
  auto* said = arguments.add_option_group("transcript")->require_option(1);
  said->add_option("--transcript", options.transcript, "What was said");
  said->add_option("--transcript-file", options.transcriptFile,
                   "A file that holds it, read again for each client");
  arguments.add_option("--duration", options.duration, "Seconds of sound for the whole transcript")
      ->check(CLI::NonNegativeNumber)
      ->capture_default_str();
  arguments.add_option("--delay-ms", delay, "Delay each answer")->check(CLI::Range(0, 60'000));
  const auto* drop =
      arguments.add_option("--drop-after", dropAfter, "Cut the connection after this many frames of sound")
          ->check(CLI::PositiveNumber);
  arguments.add_flag("--rubbish", options.rubbish, "Answer with broken JSON");
  arguments.add_flag("--arrays", options.arrays, "Answer with arrays");
  arguments.add_flag("--no-config", options.noConfig, "Do not know config and reset messages");
  arguments.add_flag("--never-answer", options.neverAnswer, "Answer nothing");
  arguments.add_flag("--log", options.log, "Print a line for each client and each answer");
  CLI11_PARSE(arguments, argc, argv);
  options.delay = std::chrono::milliseconds{delay};
  if (drop->count() > 0) options.dropAfter = dropAfter;

  const QCoreApplication application(argc, argv);
  QWebSocketServer server("tavelo-rehearsal-server", QWebSocketServer::NonSecureMode);
  QObject::connect(&server, &QWebSocketServer::newConnection, &server, [&] {
    while (auto* socket = server.nextPendingConnection())
      new tavelo::rehearsal::RehearsalSession(options, socket, &server);
  });
  if (!server.listen(QHostAddress::LocalHost, options.port)) {
    std::fprintf(stderr, "tavelo-rehearsal-server: %s\n", qPrintable(server.errorString()));
    return 1;
  }
  std::printf("%d\n", server.serverPort());
  std::fflush(stdout);
  return QCoreApplication::exec();
}
