#include "app/SpeechWiring.h"

#include <utility>

#include "platform/recognizer/VoskConfiguration.h"
#include "platform/recognizer/VoskSpeech.h"

namespace tavelo {

ConfiguredSpeech makeSpeechInProcess(platform::MainQueue& mainQueue,
                                     const std::optional<std::filesystem::path>& dataHome) {
  const recognizer::VoskConfiguration configuration(dataHome);
  auto speech = std::make_unique<recognizer::VoskSpeech>(mainQueue, configuration);
  auto* vosk = speech.get();
  std::string description = "in this process, by " + configuration.library();
  if (const auto model = configuration.modelFolder("vi_VN")) description += " with " + model->string();
  return {.speech = std::move(speech),
          .description = std::move(description),
          .preload = [vosk](const std::string& locale) { vosk->preload(locale); },
          .notifyThrough = [vosk](auto& notifications) { vosk->notifyThrough(notifications); },
          .failure = [vosk](const std::string& locale, auto limit) { return vosk->failure(locale, limit); }};
}

}  // namespace tavelo
