#include <QCoreApplication>

#include "app/DesktopArguments.h"
#include "app/SpeechWiring.h"
#include "language/Language.h"
#include "language/Texts.h"
#include "platform/recognizer/server/VoskServerSpeech.h"
#include "settings/Names.h"

namespace tavelo {
namespace {

/// The server's thread needs an application object, which some commands do not have. Never deleted: it lasts
/// as long as Qt's own static objects.
void provideApplicationObject() {
  static DesktopArguments arguments;
  if (QCoreApplication::instance() == nullptr) new QCoreApplication(arguments.count, arguments.values);
}

}  // namespace

ConfiguredSpeech makeConfiguredSpeech(platform::MainQueue& mainQueue,
                                      const std::optional<std::filesystem::path>& dataHome,
                                      const settings::Settings& settings) {
  const auto address = settings.value(settings::names::recognizer);
  if (address.empty()) return makeSpeechByProcess(mainQueue, dataHome, settings);
  provideApplicationObject();
  auto speech = std::make_unique<recognizer::VoskServerSpeech>(mainQueue, address);
  auto* server = speech.get();
  return {
      .speech = std::move(speech),
      .description = language::say(language::words::byServer, {address}),
      .preload = [](const std::string&) {},
      .load = [](const std::string&) { return nullptr; },
      .notifyThrough = [server](auto& notifications) { server->notifyThrough(notifications); },
      .failure = [server](const std::string& locale, auto limit) { return server->failure(locale, limit); },
      .engine = [](const std::string&) { return std::string{}; },
      .isLoading = [](const std::string&) { return false; },
      .lastFailure = [] { return std::string{}; }};
}

}  // namespace tavelo
