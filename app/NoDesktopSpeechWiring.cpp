#include "app/SpeechWiring.h"

namespace tavelo {

ConfiguredSpeech makeConfiguredSpeech(platform::MainQueue& mainQueue,
                                      const std::optional<std::filesystem::path>& dataHome) {
  return makeSpeechInProcess(mainQueue, dataHome);
}

}  // namespace tavelo
