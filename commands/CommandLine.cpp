#include "commands/CommandLine.h"

#include <cstdio>
#include <string>

#include <CLI/CLI.hpp>

#include "commands/CommandFailure.h"
#include "commands/DesktopCommands.h"
#include "commands/HistoryCommand.h"
#include "commands/NormalizeCommand.h"
#include "commands/RehearseCommand.h"

namespace tavelo {
namespace {

int codeOf(ExitCode code) { return static_cast<int>(code); }

ExitCode startDesktop(const DesktopCommands& desktop) {
  if (desktop.start) return desktop.start();
  throw CommandFailure("this build has no desktop; “tavelo --help” lists what it can do");
}

/// A command's outcome; what it threw becomes its one line.
template <class Command>
ExitCode guarded(Command command) {
  try {
    return command();
  } catch (const CommandFailure& failure) {
    std::fprintf(stderr, "tavelo: %s\n", failure.what());
    return ExitCode::failed;
  }
}

}  // namespace

int runCommandLine(int argc, const char* const* argv, const DesktopCommands& desktop) {
  CLI::App app{"Tavelo: spoken Vietnamese, as text, where you are typing.", "tavelo"};
  app.set_version_flag("--version", "tavelo " TAVELO_VERSION);
  app.require_subcommand(0, 1);
  app.get_formatter()->column_width(36);

  NormalizeOptions normalize;
  auto* normalizeCommand = app.add_subcommand("normalize", "Print the finished text of a raw transcript");
  normalizeCommand->add_option("FILE", normalize.file,
                               "The transcript, UTF-8; standard input when absent or -");

  HistoryOptions history;
  auto* historyCommand = app.add_subcommand("history", "List recent dictations, newest first");
  historyCommand->add_option("--limit", history.limit, "How many at most")
      ->check(CLI::Range(0, 1'000'000))
      ->type_name("N")
      ->capture_default_str();
  historyCommand->add_flag("--json", history.json, "Print the entries as the history file holds them");

  RehearseOptions rehearse;
  auto* rehearseCommand =
      app.add_subcommand("rehearse", "Play a story on a simulated desktop and check how it ends");
  rehearseCommand->add_option("STORY", rehearse.story, "The story, a JSON file")->required();
  auto* audio = rehearseCommand->add_option(
      "--audio", rehearse.audio,
      "Speak this WAV file (16 kHz, mono, 16 bit) into the story's microphone, in "
      "real time, and recognise it with the configured recogniser");
  audio->type_name("WAV");
  rehearseCommand
      ->add_option("--release-after", rehearse.releaseAfter,
                   "Seconds of silence between the last sample and the release of the key")
      ->type_name("SECONDS")
      ->check(CLI::Range(0.0, 600.0))
      ->needs(audio)
      ->capture_default_str();

  CLI::App* insertLastCommand = nullptr;
  if (desktop.insertLast) {
    insertLastCommand = app.add_subcommand(
        "insert-last", "Have the running program insert its last text where the focus is in 3 seconds");
  }
  CLI::App* doctorCommand = nullptr;
  if (desktop.doctor) {
    doctorCommand = app.add_subcommand(
        "doctor", "Check every service that a dictation needs on this desktop, and say what to do");
  }

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? codeOf(ExitCode::done) : codeOf(ExitCode::wrongUsage);
  }
  return codeOf(guarded([&] {
    if (*normalizeCommand) return runNormalize(normalize);
    if (*historyCommand) return runHistory(history);
    if (*rehearseCommand) return runRehearse(rehearse);
    if (insertLastCommand != nullptr && *insertLastCommand) return desktop.insertLast();
    if (doctorCommand != nullptr && *doctorCommand) return desktop.doctor();
    return startDesktop(desktop);
  }));
}

}  // namespace tavelo
