#include "platform/SwitchingSpeech.h"

#include <utility>

namespace tavelo::platform {

class SwitchingSpeech::Task final : public SpeechRecognitionTask {
 public:
  Task(std::shared_ptr<SpeechRecognitionTask> task, std::shared_ptr<Use> use)
      : task_(std::move(task)), use_(std::move(use)) {}

  void cancel() override {
    use_->reset();
    task_->cancel();
  }

 private:
  const std::shared_ptr<SpeechRecognitionTask> task_;
  /// Empty once the dictation is over.
  const std::shared_ptr<Use> use_;
};

class SwitchingSpeech::Recognizer final : public SpeechRecognizer {
 public:
  Recognizer(std::shared_ptr<SpeechRecognizer> recognizer, Use use)
      : recognizer_(std::move(recognizer)), use_(std::move(use)) {}

  bool isAvailable() override { return recognizer_->isAvailable(); }

  std::shared_ptr<SpeechRecognitionTask> recognitionTask(
      std::shared_ptr<SpeechAudioBufferRecognitionRequest> request, ResultHandler resultHandler) override {
    // The handler holds it too: a task may be dropped while it runs.
    const auto use = std::make_shared<Use>(use_);
    auto handler = [use, handler = std::move(resultHandler)](const auto& result, const auto& error) {
      if (error || (result && result->isFinal)) use->reset();
      handler(result, error);
    };
    return std::make_shared<Task>(recognizer_->recognitionTask(std::move(request), std::move(handler)), use);
  }

 private:
  const std::shared_ptr<SpeechRecognizer> recognizer_;
  const Use use_;
};

SwitchingSpeech::SwitchingSpeech(MainQueue& mainQueue, std::unique_ptr<Speech> speech)
    : mainQueue_(mainQueue), current_{.speech = std::move(speech)} {}

void SwitchingSpeech::use(std::unique_ptr<Speech> speech) {
  replaced_.push_back(std::exchange(current_, Backend{.speech = std::move(speech)}));
  if (replaced_.size() == 1) mainQueue_.asyncAfter(interval, lifetime_.guard([this] { dropUnused(); }));
}

void SwitchingSpeech::dropUnused() {
  std::erase_if(replaced_, [](const Backend& each) { return each.use.use_count() == 1; });
  if (!replaced_.empty()) mainQueue_.asyncAfter(interval, lifetime_.guard([this] { dropUnused(); }));
}

std::shared_ptr<SpeechRecognizer> SwitchingSpeech::makeRecognizer(const std::string& localeIdentifier) {
  auto recognizer = current_.speech->makeRecognizer(localeIdentifier);
  if (!recognizer) return nullptr;
  return std::make_shared<Recognizer>(std::move(recognizer), current_.use);
}

std::shared_ptr<SpeechAudioBufferRecognitionRequest> SwitchingSpeech::makeAudioBufferRecognitionRequest() {
  return current_.speech->makeAudioBufferRecognitionRequest();
}

void SwitchingSpeech::requestAuthorization(std::function<void(SpeechAuthorizationStatus)> handler) {
  if (mainQueue_.isMainThread()) return current_.speech->requestAuthorization(std::move(handler));
  mainQueue_.async(lifetime_.guard([this, handler = std::move(handler)]() mutable {
    current_.speech->requestAuthorization(std::move(handler));
  }));
}

}  // namespace tavelo::platform
