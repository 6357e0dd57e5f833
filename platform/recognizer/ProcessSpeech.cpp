#include "platform/recognizer/ProcessSpeech.h"

#include <functional>
#include <utility>
#include <vector>

#include "language/Language.h"
#include "language/Texts.h"
#include "platform/recognizer/ProcessEngine.h"

namespace tavelo::recognizer {

class ProcessSpeech::Recognizer final : public EngineRecognizer {
 public:
  Recognizer(platform::MainQueue& mainQueue, std::shared_ptr<WaitingNotice> notice,
             std::shared_ptr<ProcessEngine> engine, std::function<void()> used)
      : EngineRecognizer(mainQueue, std::move(notice)), engine_(std::move(engine)), used_(std::move(used)) {}

 private:
  std::shared_ptr<const Outcome> engine() override {
    // One process serves the question and the dictation that follows, even if it failed in between.
    if (!outcome_) outcome_ = engine_->warm();
    return outcome_;
  }

  void recognize(std::shared_ptr<RecognitionTask> task,
                 std::shared_ptr<platform::BufferedRecognitionRequest> request) override {
    task->onEnd([weak = std::weak_ptr(engine_), used = used_] {
      if (const auto engine = weak.lock()) engine->wake();
      used();
    });
    if (outcome_->state() == Outcome::State::failed) return task->fail(engine_->whyNotLoaded());
    engine_->recognize(std::move(task), std::move(request));
  }

  const std::shared_ptr<ProcessEngine> engine_;
  const std::function<void()> used_;
  std::shared_ptr<const Outcome> outcome_;
};

ProcessSpeech::ProcessSpeech(platform::MainQueue& mainQueue, std::filesystem::path program,
                             ModelConfiguration configuration, RecognizerLog log)
    : EngineSpeech(mainQueue),
      program_(std::move(program)),
      configuration_(std::move(configuration)),
      log_(std::move(log)) {}

ProcessSpeech::~ProcessSpeech() {
  // Recognisers may still hold the engines.
  for (const auto& [model, engine] : engines_) engine->stop();
}

void ProcessSpeech::preload(const std::string& localeIdentifier) { load(localeIdentifier); }

std::shared_ptr<const Outcome> ProcessSpeech::load(const std::string& localeIdentifier) {
  const auto engine = engineFor(localeIdentifier);
  return engine ? engine->warm() : nullptr;
}

std::string ProcessSpeech::engine(const std::string& localeIdentifier) {
  const auto engine = engineFor(localeIdentifier);
  return engine ? engine->warm()->success() : std::string{};
}

bool ProcessSpeech::isLoading(const std::string& localeIdentifier) {
  const auto engine = engineFor(localeIdentifier);
  return engine && engine->warm()->state() == Outcome::State::pending;
}

std::string ProcessSpeech::failure(const std::string& localeIdentifier, std::chrono::milliseconds limit) {
  const auto engine = engineFor(localeIdentifier);
  if (!engine)
    return language::say(language::words::noModelFolder,
                         {localeIdentifier, configuration_.modelPlace(localeIdentifier)});
  const auto outcome = engine->warm();
  outcome->wait(limit);
  return outcome->failure();
}

std::shared_ptr<platform::SpeechRecognizer> ProcessSpeech::makeRecognizer(
    const std::string& localeIdentifier) {
  auto engine = engineFor(localeIdentifier);
  if (!engine) return nullptr;
  engine->warm();
  return std::make_shared<Recognizer>(mainQueue(), notice(), std::move(engine),
                                      lifetime_.guard([this] { restWhenIdle(); }));
}

std::shared_ptr<ProcessEngine> ProcessSpeech::engineFor(const std::string& localeIdentifier) {
  const auto folder = configuration_.modelFolder(localeIdentifier);
  if (!folder) return nullptr;
  std::vector<std::string> arguments{"--model", folder->string()};
  const auto library = configuration_.libraryFor(*folder);
  if (!library.empty()) arguments.insert(arguments.end(), {"--library", library});
  auto& engine = engines_[folder->string() + '\n' + library];
  if (!engine)
    engine = std::make_shared<ProcessEngine>(RecognizerCommand{program_, std::move(arguments)}, log_);
  restWhenIdle();
  return engine;
}

void ProcessSpeech::restWhenIdle() {
  mainQueue().asyncAfter(idleLimit, lifetime_.guard([this, use = ++uses_] {
    if (use != uses_) return;
    for (const auto& [model, engine] : engines_) engine->rest();
  }));
}

}  // namespace tavelo::recognizer
