#include "app/SpeechWiring.h"
#include "commands/CommandWiring.h"
#include "platform/posix/PosixFileManager.h"

namespace tavelo {

std::unique_ptr<platform::FileManager> makeCommandFileManager() {
  return std::make_unique<posix::PosixFileManager>();
}

std::unique_ptr<platform::Speech> makeCommandSpeech(platform::MainQueue& mainQueue) {
  return makeSpeechByProcess(mainQueue, posix::PosixFileManager().applicationSupportDirectory()).speech;
}

std::optional<DesktopCommands> desktopCommands() { return std::nullopt; }

}  // namespace tavelo
