#include "platform/simulated/SimulatedSpeech.h"

#include <utility>

#include "platform/simulated/Rules.h"
#include "platform/simulated/World.h"

namespace tavelo::simulated {

using platform::SpeechAuthorizationStatus;

class SimulatedSpeech::Recognizer final : public platform::SpeechRecognizer {
 public:
  explicit Recognizer(SimulatedSpeech& speech) : speech_(speech) {}

  bool isAvailable() override { return speech_.available_; }

  std::shared_ptr<platform::SpeechRecognitionTask> recognitionTask(
      std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest> request,
      ResultHandler resultHandler) override {
    return speech_.startTask(request, std::move(resultHandler));
  }

 private:
  SimulatedSpeech& speech_;
};

SimulatedSpeech::SimulatedSpeech(World& world) : world_(world) {}

std::shared_ptr<platform::SpeechRecognizer> SimulatedSpeech::makeRecognizer(
    const std::string& localeIdentifier) {
  return locales_.contains(localeIdentifier) ? std::make_shared<Recognizer>(*this) : nullptr;
}

std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest>
SimulatedSpeech::makeAudioBufferRecognitionRequest() {
  const auto& record = requests_.emplace_back(std::make_shared<RequestRecord>());
  return std::make_shared<SimulatedRecognitionRequest>(record);
}

void SimulatedSpeech::requestAuthorization(std::function<void(SpeechAuthorizationStatus)> handler) {
  if (!world_.loop().isMainThread()) {
    world_.loop().async([this, handler = std::move(handler)] { requestAuthorization(handler); });
    return;
  }
  ++authorizationRequests_;
  const bool undecided = status_ == SpeechAuthorizationStatus::notDetermined;
  if (undecided) {
    ++prompts_;
    world_.report(WorldEvent::Kind::permission, "speech recognition prompt shown");
  }
  answer_.pass(world_.loop(), [this, undecided, granted = answer_.granted, handler = std::move(handler)] {
    if (undecided) {
      status_ = granted ? SpeechAuthorizationStatus::authorized : SpeechAuthorizationStatus::denied;
      world_.report(WorldEvent::Kind::permission,
                    granted ? "speech recognition granted" : "speech recognition refused");
    }
    handler(status_);
  });
}

std::shared_ptr<platform::SpeechRecognitionTask> SimulatedSpeech::startTask(
    const std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest>& request,
    platform::SpeechRecognizer::ResultHandler handler) {
  auto simulated = std::dynamic_pointer_cast<SimulatedRecognitionRequest>(request);
  if (!simulated) rules::broken("a recognition request of another platform");
  RecognitionScript script = defaultScript_;
  if (!scripts_.empty()) {
    script = std::move(scripts_.front());
    scripts_.pop_front();
  }
  const auto& task = tasks_.emplace_back(std::make_shared<SimulatedRecognitionTask>(
      world_.loop(), std::move(simulated), std::move(handler), std::move(script)));
  task->begin();
  return task;
}

bool SimulatedSpeech::answerNow(const RecognitionStep& step) {
  world_.requireMainThread("SimulatedSpeech::answerNow");
  return !tasks_.empty() && tasks_.back()->answer(step);
}

}  // namespace tavelo::simulated
