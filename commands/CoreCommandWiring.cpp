#include "app/SpeechWiring.h"
#include "commands/CommandWiring.h"
#include "commands/InputOutput.h"
#include "language/Language.h"
#include "language/Texts.h"
#include "platform/posix/PosixFileManager.h"

namespace tavelo {

std::unique_ptr<platform::FileManager> makeCommandFileManager() {
  return std::make_unique<posix::PosixFileManager>();
}

ConfiguredSpeech makeCommandSpeech(platform::MainQueue& mainQueue) {
  return makeSpeechByProcess(mainQueue, posix::PosixFileManager().applicationSupportDirectory(),
                             settings::Settings::ofUser());
}

std::filesystem::path instanceFolder() { return {}; }

ExitCode runGetModel(const GetModelOptions& /*options*/) {
  throw CommandFailure(language::say(language::words::noQtInBuild));
}

std::optional<DesktopCommands> desktopCommands() { return std::nullopt; }

}  // namespace tavelo
