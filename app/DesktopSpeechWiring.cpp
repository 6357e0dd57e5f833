#include <QCoreApplication>
#include <cstdlib>
#include <utility>

#include "app/SpeechWiring.h"
#include "platform/recognizer/server/VoskServerSpeech.h"

namespace tavelo {
namespace {

/// A command has no application object, which the server's thread needs. It stays to the end, as Qt's own
/// statics do.
void provideApplicationObject() {
  static int count = 1;
  static char name[] = "tavelo";
  static char* values[] = {name, nullptr};
  if (QCoreApplication::instance() == nullptr) new QCoreApplication(count, values);
}

}  // namespace

ConfiguredSpeech makeConfiguredSpeech(platform::MainQueue& mainQueue,
                                      const std::optional<std::filesystem::path>& dataHome) {
  const char* address = std::getenv("TAVELO_RECOGNIZER");
  if (address == nullptr || *address == '\0') return makeSpeechInProcess(mainQueue, dataHome);
  provideApplicationObject();
  auto speech = std::make_unique<recognizer::VoskServerSpeech>(mainQueue, address);
  auto* known = speech.get();
  return {.speech = std::move(speech),
          .description = std::string{"by the server at "} + address,
          .preload = [](const std::string&) {},
          .failure = [known](const std::string& locale) { return known->failure(locale); }};
}

}  // namespace tavelo
