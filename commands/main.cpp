#include <cstdio>
#include <memory>
#include <optional>

#include <CLI/CLI.hpp>

#include "commands/CommandWiring.h"
#include "commands/Commands.h"
#include "commands/InputOutput.h"

namespace tavelo {
namespace {

// Each `add…` declares one command. If the command line names it, parsing runs it and sets `outcome`.

void addNormalize(CLI::App& app, ExitCode& outcome) {
  auto options = std::make_shared<NormalizeOptions>();
  auto* command = app.add_subcommand("normalize", "Print the finished text of a raw transcript");
  command->add_option("FILE", options->file, "The transcript, UTF-8; standard input when absent or -");
  command->callback([options, &outcome] { outcome = runNormalize(*options); });
}

void addHistory(CLI::App& app, ExitCode& outcome) {
  auto options = std::make_shared<HistoryOptions>();
  auto* command = app.add_subcommand("history", "List recent dictations, newest first");
  command->add_option("--limit", options->limit, "How many at most")
      ->check(CLI::Range(0, 1'000'000))
      ->type_name("N")
      ->capture_default_str();
  command->add_flag("--json", options->json, "Print the entries as the history file holds them");
  command->callback([options, &outcome] { outcome = runHistory(*options); });
}

void addRehearse(CLI::App& app, ExitCode& outcome) {
  auto options = std::make_shared<RehearseOptions>();
  auto* command = app.add_subcommand("rehearse", "Play a story on a simulated desktop and check how it ends");
  command->add_option("STORY", options->story, "The story, a JSON file")->required();
  auto* audio = command->add_option(
      "--audio", options->audio,
      "Speak this WAV file into the story's microphone, in real time, and recognise it with "
      "the configured recogniser");
  audio->type_name("WAV");
  command
      ->add_option("--release-after", options->releaseAfter,
                   "Seconds of silence between the last sample and the release of the key")
      ->type_name("SECONDS")
      ->check(CLI::Range(0.0, 600.0))
      ->needs(audio)
      ->capture_default_str();
  command->callback([options, &outcome] { outcome = runRehearse(*options); });
}

void addTranscribe(CLI::App& app, ExitCode& outcome) {
  auto options = std::make_shared<TranscribeOptions>();
  auto* command =
      app.add_subcommand("transcribe", "Print what the configured recogniser hears in recordings");
  command->add_option("FILE", options->files, "Recordings: WAV of any rate and number of channels")
      ->required();
  command
      ->add_option("--against", options->against,
                   "Count wrong words: lines with the name of a recording, a tab and what is said in it")
      ->type_name("TRANSCRIPTS");
  command->add_flag("--json", options->json, "Print one JSON document");
  command->callback([options, &outcome] { outcome = runTranscribe(*options); });
}

void addGetModel(CLI::App& app, ExitCode& outcome) {
  auto options = std::make_shared<GetModelOptions>();
  auto* command = app.add_subcommand("get-model", "Fetch a speech model and the library for it");
  command->add_option("MODEL", options->model, "A name from --list, or vi_VN for the one that we recommend")
      ->capture_default_str();
  command->add_flag("--list", options->list, "List the models: name, size, kind, licence");
  command->add_flag("--replace", options->replace, "Fetch again what is already installed");
  command->add_option("--sha256", options->sha256, "The SHA-256 checksum that the model's archive must have")
      ->type_name("SUM");
  command
      ->add_option("--library-sha256", options->librarySha256,
                   "The SHA-256 checksum that the library's archive must have")
      ->type_name("SUM");
  command->add_option("--from", options->from, "Take the archives from this folder instead of the network")
      ->type_name("FOLDER");
  command->callback([options, &outcome] { outcome = runGetModel(*options); });
}

void addDesktop(CLI::App& app, ExitCode& outcome, const DesktopCommands& desktop) {
  app.add_subcommand("insert-last",
                     "Have the running program insert its last text where the focus is in 3 seconds")
      ->callback([desktop, &outcome] { outcome = desktop.insertLast(); });
  auto options = std::make_shared<ListenOptions>();
  auto* listen = app.add_subcommand("listen", "Have the running program begin or end a dictation");
  listen->add_option("ACTION", options->action, "start, stop, toggle or cancel")
      ->required()
      ->check(CLI::IsMember({"start", "stop", "toggle", "cancel"}));
  listen->callback([desktop, options, &outcome] { outcome = desktop.listen(*options); });
  app.add_subcommand("doctor",
                     "Check every service that a dictation needs on this desktop, and say what to do")
      ->callback([desktop, &outcome] { outcome = desktop.doctor(); });
  if (desktop.autostart != nullptr) {
    auto action = std::make_shared<AutostartOptions>();
    auto* command = app.add_subcommand("autostart", "Start the program when you log in, or not");
    command->add_option("ACTION", action->action, "on, off or status")
        ->required()
        ->check(CLI::IsMember({"on", "off", "status"}));
    command->callback([desktop, action, &outcome] { outcome = desktop.autostart(*action); });
  }
  for (const auto& each : desktop.others) {
    app.add_subcommand(each.name, each.description)->callback([run = each.run, &outcome] {
      outcome = run();
    });
  }
}

ExitCode start(const std::optional<DesktopCommands>& desktop) {
  if (desktop) return desktop->start();
  throw CommandFailure("this build has no desktop; “tavelo --help” lists what it can do");
}

ExitCode runCommandLine(int argc, const char* const* argv) {
  CLI::App app{"Tavelo: spoken Vietnamese, as text, where you are typing.", "tavelo"};
  app.set_version_flag("--version", "tavelo " TAVELO_VERSION);
  app.require_subcommand(0, 1);
  app.get_formatter()->column_width(36);
  auto outcome = ExitCode::done;
  addNormalize(app, outcome);
  addHistory(app, outcome);
  addRehearse(app, outcome);
  addTranscribe(app, outcome);
  addGetModel(app, outcome);
  const auto desktop = desktopCommands();
  if (desktop) addDesktop(app, outcome, *desktop);
  try {
    app.parse(argc, argv);
    return app.get_subcommands().empty() ? start(desktop) : outcome;
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? ExitCode::done : ExitCode::wrongUsage;
  } catch (const CommandFailure& failure) {
    std::fprintf(stderr, "tavelo: %s\n", onOneLine(failure.what()).c_str());
    return ExitCode::failed;
  }
}

}  // namespace
}  // namespace tavelo

int main(int argc, char** argv) {
  tavelo::keepStandardStreams();
  return static_cast<int>(tavelo::runCommandLine(argc, argv));
}
