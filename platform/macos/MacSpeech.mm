#import "platform/macos/MacSpeech.h"

#include <utility>

#import "platform/macos/FoundationText.h"
#import "platform/macos/MacRecognitionRequest.h"
#import "platform/macos/MacRecognitionTask.h"

namespace tavelo::macos {

class MacSpeech::Recognizer final : public platform::SpeechRecognizer {
 public:
  using Tasks = std::vector<std::weak_ptr<MacRecognitionTask>>;

  Recognizer(platform::MainQueue& mainQueue, SFSpeechRecognizer* recognizer, std::shared_ptr<Tasks> tasks)
      : mainQueue_(mainQueue), recognizer_(recognizer), tasks_(std::move(tasks)) {}

  bool isAvailable() override { return recognizer_.isAvailable; }

  std::shared_ptr<platform::SpeechRecognitionTask> recognitionTask(
      std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest> request,
      ResultHandler resultHandler) override {
    const auto task = std::make_shared<MacRecognitionTask>(mainQueue_, std::move(resultHandler));
    std::erase_if(*tasks_, [](const auto& one) { return one.expired(); });
    tasks_->push_back(task);
    // Only our own requests exist on this platform.
    task->begin(recognizer_, static_cast<const MacRecognitionRequest&>(*request).get());
    return task;
  }

 private:
  platform::MainQueue& mainQueue_;
  SFSpeechRecognizer* const recognizer_;
  const std::shared_ptr<Tasks> tasks_;
};

std::shared_ptr<platform::SpeechRecognizer> MacSpeech::makeRecognizer(const std::string& localeIdentifier) {
  NSLocale* locale = [NSLocale localeWithLocaleIdentifier:toFoundation(localeIdentifier)];
  SFSpeechRecognizer* recognizer = [[SFSpeechRecognizer alloc] initWithLocale:locale];
  if (recognizer == nil) return nullptr;
  return std::make_shared<Recognizer>(mainQueue_, recognizer, tasks_);
}

std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest>
MacSpeech::makeAudioBufferRecognitionRequest() {
  return std::make_shared<MacRecognitionRequest>();
}

void MacSpeech::requestAuthorization(std::function<void(platform::SpeechAuthorizationStatus)> handler) {
  [SFSpeechRecognizer requestAuthorization:^(SFSpeechRecognizerAuthorizationStatus status) {
    handler(static_cast<platform::SpeechAuthorizationStatus>(status));
  }];
}

void MacSpeech::failRunningTasks(const std::string& reason) {
  // A copy, because a handler may begin the next dictation.
  for (const auto& one : std::vector(*tasks_)) {
    if (const auto task = one.lock()) task->fail(reason);
  }
}

}  // namespace tavelo::macos
