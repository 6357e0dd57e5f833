#include "app/SpeechWiring.h"
#include "commands/CommandWiring.h"
#include "commands/InputOutput.h"
#include "platform/macos/MacFileManager.h"
#include "text/TranscriptCacheStore.h"

namespace tavelo {

ExitCode runSetup() {
  print("A Mac needs no set-up: macOS asks for each permission when Tavelo first needs it.\n");
  return ExitCode::done;
}

ExitCode runGetModel(const GetModelOptions& /*options*/) {
  print("A Mac needs no model: macOS recognises Vietnamese itself.\n");
  return ExitCode::done;
}

std::unique_ptr<platform::FileManager> makeCommandFileManager() {
  return std::make_unique<macos::MacFileManager>();
}

/// For rehearsals with real sound. macOS's recogniser needs the main run loop, which a rehearsal has not.
ConfiguredSpeech makeCommandSpeech(platform::MainQueue& mainQueue) {
  return makeSpeechByProcess(mainQueue, macos::MacFileManager().applicationSupportDirectory(),
                             settings::Settings(std::nullopt));
}

std::filesystem::path instanceFolder() {
  // Not the temporary folder: macOS deletes what lies there for three days, a lock that is held too.
  return transcriptCacheFile(macos::MacFileManager()).parent_path();
}

std::optional<DesktopCommands> desktopCommands() {
  return DesktopCommands{.start = runStart,
                         .insertLast = runInsertLast,
                         .listen = runListen,
                         .doctor = runDoctor,
                         .others = {{"setup", "A Mac needs no set-up", runSetup}}};
}

}  // namespace tavelo
