#include "platform/recognizer/VoskSpeech.h"

#include <chrono>
#include <utility>

#include "platform/BufferedRecognitionRequest.h"
#include "platform/MainQueue.h"
#include "platform/recognizer/VoskEngine.h"
#include "platform/recognizer/VoskSpeechRecognizer.h"

namespace tavelo::recognizer {

VoskSpeech::VoskSpeech(platform::MainQueue& mainQueue, VoskConfiguration configuration)
    : mainQueue_(mainQueue), configuration_(std::move(configuration)) {}

VoskSpeech::~VoskSpeech() {
  // Recognisers may still hold the engines.
  for (const auto& [locale, engine] : engines_) engine->stop();
}

void VoskSpeech::preload(const std::string& localeIdentifier) { engineFor(localeIdentifier); }

std::string VoskSpeech::failure(const std::string& localeIdentifier) const {
  if (!configuration_.modelFolder(localeIdentifier)) return "no model folder for " + localeIdentifier;
  const auto found = engines_.find(localeIdentifier);
  return found != engines_.end() ? found->second->failure() : std::string{};
}

std::shared_ptr<platform::SpeechRecognizer> VoskSpeech::makeRecognizer(const std::string& localeIdentifier) {
  auto engine = engineFor(localeIdentifier);
  return engine ? std::make_shared<VoskSpeechRecognizer>(mainQueue_, std::move(engine)) : nullptr;
}

std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest>
VoskSpeech::makeAudioBufferRecognitionRequest() {
  return std::make_shared<platform::BufferedRecognitionRequest>();
}

void VoskSpeech::requestAuthorization(std::function<void(platform::SpeechAuthorizationStatus)> handler) {
  mainQueue_.async(lifetime_.guard([handler = std::move(handler)] {
    if (handler) handler(platform::SpeechAuthorizationStatus::authorized);
  }));
}

std::shared_ptr<VoskEngine> VoskSpeech::engineFor(const std::string& localeIdentifier) {
  const auto folder = configuration_.modelFolder(localeIdentifier);
  if (!folder) return nullptr;
  auto& engine = engines_[localeIdentifier];
  const bool failed =
      engine && engine->waitUntilLoaded(std::chrono::milliseconds{0}) == VoskEngine::State::failed;
  // A failed engine that still has a dictation to answer is left to do so.
  if (!engine || (failed && engine->isIdle())) {
    if (engine) engine->stop();
    engine = std::make_shared<VoskEngine>(configuration_.library(), *folder);
  }
  return engine;
}

}  // namespace tavelo::recognizer
