#include "platform/recognizer/VoskSpeech.h"

#include <utility>

#include "platform/recognizer/VoskEngine.h"

namespace tavelo::recognizer {
namespace {

/// All recognisers of a locale share one engine.
class Recognizer final : public EngineRecognizer {
 public:
  Recognizer(platform::MainQueue& mainQueue, platform::UserNotifications* notifications,
             std::shared_ptr<VoskEngine> engine)
      : EngineRecognizer(mainQueue, notifications), engine_(std::move(engine)) {}

 private:
  std::shared_ptr<const Outcome> engine() override { return {engine_, &engine_->loading()}; }

  void recognize(std::shared_ptr<RecognitionTask> task,
                 std::shared_ptr<platform::BufferedRecognitionRequest> request) override {
    engine_->recognize(std::move(task), std::move(request));
  }

  const std::shared_ptr<VoskEngine> engine_;
};

}  // namespace

VoskSpeech::VoskSpeech(platform::MainQueue& mainQueue, VoskConfiguration configuration)
    : EngineSpeech(mainQueue), configuration_(std::move(configuration)) {}

VoskSpeech::~VoskSpeech() {
  // Recognisers may still hold the engines.
  for (const auto& [locale, engine] : engines_) engine->stop();
}

void VoskSpeech::preload(const std::string& localeIdentifier) { engineFor(localeIdentifier); }

std::string VoskSpeech::failure(const std::string& localeIdentifier, std::chrono::milliseconds limit) {
  const auto engine = engineFor(localeIdentifier);
  if (!engine) return "no model folder for " + localeIdentifier;
  engine->loading().wait(limit);
  return engine->loading().failure();
}

std::shared_ptr<platform::SpeechRecognizer> VoskSpeech::makeRecognizer(const std::string& localeIdentifier) {
  auto engine = engineFor(localeIdentifier);
  return engine ? std::make_shared<Recognizer>(mainQueue(), notifications(), std::move(engine)) : nullptr;
}

std::shared_ptr<VoskEngine> VoskSpeech::engineFor(const std::string& localeIdentifier) {
  const auto folder = configuration_.modelFolder(localeIdentifier);
  if (!folder) return nullptr;
  auto& engine = engines_[localeIdentifier];
  const bool failed = engine && engine->loading().state() == Outcome::State::failed;
  // Keep a failed engine while a dictation still waits for its error.
  if (!engine || (failed && engine->isIdle())) {
    if (engine) engine->stop();
    engine = std::make_shared<VoskEngine>(configuration_.library(), *folder);
  }
  return engine;
}

}  // namespace tavelo::recognizer
