#include <cstdio>
#include <memory>
#include <optional>
#include <string>

#include <CLI/CLI.hpp>

#include "commands/CommandWiring.h"
#include "commands/Commands.h"
#include "commands/InputOutput.h"
#include "commands/Usage.h"
#include "commands/Version.h"
#include "language/Language.h"
#include "language/Texts.h"
#include "text/TranscriptCacheFile.h"

namespace tavelo {
namespace {

using language::say;
namespace words = language::words;

// Each `add…` declares one command. If the command line names it, parsing runs it and sets `outcome`.

void addNormalize(CLI::App& app, ExitCode& outcome) {
  auto options = std::make_shared<NormalizeOptions>();
  auto* command = app.add_subcommand("normalize", say(words::aboutNormalize));
  command->add_option("FILE", options->file, say(words::aboutNormalizeFile));
  command->callback([options, &outcome] { outcome = runNormalize(*options); });
}

/// Empty for a number from 1 on and for "all"; else what is wrong.
std::string isForgettable(const std::string& value) {
  return TranscriptCacheFile::countNamed(value) ? std::string{} : say(words::badCount, {onOneLine(value)});
}

void addHistory(CLI::App& app, ExitCode& outcome) {
  auto options = std::make_shared<HistoryOptions>();
  auto* command = app.add_subcommand("history", say(words::aboutHistory));
  auto* limit = command->add_option("--limit", options->limit, say(words::aboutLimit))
                    ->check(CLI::Range(0, 1'000'000).description(say(words::rangeLabel, {"0", "1000000"})))
                    ->type_name("N")
                    ->capture_default_str();
  auto* json = command->add_flag("--json", options->json, say(words::aboutHistoryJson));
  command->add_option("--forget", options->forget, say(words::aboutForget))
      ->expected(0, 1)
      ->default_str("1")
      ->type_name("N|all")
      ->check(isForgettable)
      ->excludes(limit, json);
  command->callback([options, &outcome] { outcome = runHistory(*options); });
}

void addRehearse(CLI::App& app, ExitCode& outcome) {
  auto options = std::make_shared<RehearseOptions>();
  auto* command = app.add_subcommand("rehearse", say(words::aboutRehearse));
  command->add_option("STORY", options->story, say(words::aboutStory))->required();
  auto* audio = command->add_option("--audio", options->audio, say(words::aboutAudio));
  audio->type_name("WAV");
  command->add_option("--release-after", options->releaseAfter, say(words::aboutReleaseAfter))
      ->type_name("SECONDS")
      ->check(CLI::Range(0.0, 600.0).description(say(words::secondsLabel, {"0", "600"})))
      ->needs(audio)
      ->capture_default_str();
  command->callback([options, &outcome] { outcome = runRehearse(*options); });
}

void addTranscribe(CLI::App& app, ExitCode& outcome) {
  auto options = std::make_shared<TranscribeOptions>();
  auto* command = app.add_subcommand("transcribe", say(words::aboutTranscribe));
  command->add_option("FILE", options->files, say(words::aboutRecordings))->required();
  command->add_option("--against", options->against, say(words::aboutAgainst))->type_name("TRANSCRIPTS");
  command->add_flag("--json", options->json, say(words::aboutJson));
  command->callback([options, &outcome] { outcome = runTranscribe(*options); });
}

void addGetModel(CLI::App& app, ExitCode& outcome) {
  auto options = std::make_shared<GetModelOptions>();
  auto* command = app.add_subcommand("get-model", say(words::aboutGetModel));
  command->add_option("MODEL", options->model, say(words::aboutModelName))->capture_default_str();
  command->add_flag("--list", options->list, say(words::aboutList));
  command->add_flag("--replace", options->replace, say(words::aboutReplace));
  command->add_option("--sha256", options->sha256, say(words::aboutModelSum))->type_name("SUM");
  command->add_option("--library-sha256", options->librarySha256, say(words::aboutLibrarySum))
      ->type_name("SUM");
  command->add_option("--from", options->from, say(words::aboutFrom))->type_name("FOLDER");
  command->callback([options, &outcome] { outcome = runGetModel(*options); });
}

void addDesktop(CLI::App& app, ExitCode& outcome, const DesktopCommands& desktop) {
  app.add_subcommand("insert-last", say(words::aboutInsertLast))->callback([desktop, &outcome] {
    outcome = desktop.insertLast();
  });
  auto options = std::make_shared<ListenOptions>();
  auto* listen = app.add_subcommand("listen", say(words::aboutListen));
  listen->add_option("ACTION", options->action, say(words::aboutAction))
      ->required()
      ->check(CLI::IsMember({"start", "stop", "toggle", "cancel"}));
  listen->callback([desktop, options, &outcome] { outcome = desktop.listen(*options); });
  auto doctorOptions = std::make_shared<DoctorOptions>();
  doctorOptions->version = programVersion();
  auto* doctor = app.add_subcommand("doctor", say(words::aboutDoctor));
  doctor->add_flag("--json", doctorOptions->json, say(words::aboutDoctorJson));
  doctor->callback([desktop, doctorOptions, &outcome] { outcome = desktop.doctor(*doctorOptions); });
  if (desktop.autostart != nullptr) {
    auto action = std::make_shared<AutostartOptions>();
    auto* autostart = app.add_subcommand("autostart", say(words::aboutAutostart));
    autostart->add_option("ACTION", action->action, say(words::aboutAutostartAction))
        ->required()
        ->check(CLI::IsMember({"on", "off", "status"}));
    autostart->callback([desktop, action, &outcome] { outcome = desktop.autostart(*action); });
  }
  for (const auto& each : desktop.others) {
    app.add_subcommand(each.name, each.description)->callback([run = each.run, &outcome] {
      outcome = run();
    });
  }
}

ExitCode start(const std::optional<DesktopCommands>& desktop) {
  if (desktop) return desktop->start();
  throw CommandFailure(say(words::noDesktopInBuild));
}

ExitCode runCommandLine(int argc, const char* const* argv) {
  CLI::App app{say(words::aboutProgram), "tavelo"};
  speakCurrentLanguage(app);
  app.set_version_flag("--version", std::string("tavelo ") + programVersion(), say(words::aboutVersion));
  app.require_subcommand(0, 1);
  auto outcome = ExitCode::done;
  addNormalize(app, outcome);
  addHistory(app, outcome);
  addRehearse(app, outcome);
  addTranscribe(app, outcome);
  addGetModel(app, outcome);
  const auto desktop = desktopCommands();
  if (desktop) addDesktop(app, outcome, *desktop);
  groupCommands(app);
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
