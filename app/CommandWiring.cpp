#include "app/CommandWiring.h"

#include "platform/posix/PosixFileManager.h"
#include "platform/vosk/VoskConfiguration.h"
#include "platform/vosk/VoskSpeech.h"

namespace tavelo {

std::unique_ptr<platform::FileManager> makeCommandFileManager() {
  return std::make_unique<posix::PosixFileManager>();
}

std::unique_ptr<platform::Speech> makeCommandSpeech(platform::MainQueue& mainQueue) {
  return std::make_unique<vosk::VoskSpeech>(
      mainQueue, vosk::VoskConfiguration(posix::PosixFileManager().applicationSupportDirectory()));
}

}  // namespace tavelo
