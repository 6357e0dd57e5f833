#include "app/SpeechWiring.h"
#include "commands/CommandWiring.h"
#include "commands/InputOutput.h"
#include "platform/posix/PosixFileManager.h"

namespace tavelo {

std::unique_ptr<platform::FileManager> makeCommandFileManager() {
  return std::make_unique<posix::PosixFileManager>();
}

ConfiguredSpeech makeCommandSpeech(platform::MainQueue& mainQueue) {
  return makeSpeechByProcess(mainQueue, posix::PosixFileManager().applicationSupportDirectory(),
                             settings::Settings::ofUser());
}

ExitCode runGetModel(const GetModelOptions& /*options*/) {
  throw CommandFailure("this build has no Qt, so it can fetch no models; the one with a desktop can");
}

std::optional<DesktopCommands> desktopCommands() { return std::nullopt; }

}  // namespace tavelo
