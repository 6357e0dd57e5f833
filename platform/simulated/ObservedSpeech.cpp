#include "platform/simulated/ObservedSpeech.h"

#include <atomic>
#include <utility>

#include "platform/simulated/Rules.h"
#include "platform/simulated/World.h"

namespace tavelo::simulated {
namespace {

using platform::PlatformError;
using platform::SpeechRecognitionResult;
using platform::SpeechRecognitionTask;
using Request = platform::SpeechAudioBufferRecognitionRequest;

std::string textOf(const std::optional<SpeechRecognitionResult>& result,
                   const std::optional<PlatformError>& error) {
  std::string text;
  if (result) text = (result->isFinal ? "final " : "partial ") + quoted(result->formattedString);
  if (error) text += (text.empty() ? "error " : ", error ") + quoted(error->localizedDescription);
  return text;
}

class ObservedRequest final : public Request {
 public:
  ObservedRequest(World& world, std::shared_ptr<Request> request)
      : world_(world), request_(std::move(request)) {}

  const std::shared_ptr<Request>& request() const { return request_; }

  void setShouldReportPartialResults(bool wanted) override {
    world_.requireMainThread("SpeechAudioBufferRecognitionRequest::setShouldReportPartialResults");
    request_->setShouldReportPartialResults(wanted);
  }
  void append(const platform::AudioBuffer& buffer) override { request_->append(buffer); }
  void endAudio() override {
    if (!ended_.exchange(true)) world_.report(WorldEvent::Kind::speech, "end of audio");
    request_->endAudio();
  }

 private:
  World& world_;
  const std::shared_ptr<Request> request_;
  std::atomic<bool> ended_{false};
};

/// State that a task and its result handler share.
struct Progress {
  bool cancelled = false;
  bool finished = false;
};

class ObservedTask final : public SpeechRecognitionTask {
 public:
  ObservedTask(World& world, std::shared_ptr<SpeechRecognitionTask> task, std::shared_ptr<Progress> progress)
      : world_(world), task_(std::move(task)), progress_(std::move(progress)) {}

  void cancel() override {
    world_.requireMainThread("SpeechRecognitionTask::cancel");
    if (!progress_->cancelled && !progress_->finished) {
      world_.report(WorldEvent::Kind::speech, "task cancelled");
    }
    progress_->cancelled = true;
    task_->cancel();
  }

 private:
  World& world_;
  const std::shared_ptr<SpeechRecognitionTask> task_;
  const std::shared_ptr<Progress> progress_;
};

class ObservedRecognizer final : public platform::SpeechRecognizer {
 public:
  ObservedRecognizer(World& world, std::shared_ptr<platform::SpeechRecognizer> recognizer, std::string locale)
      : world_(world), recognizer_(std::move(recognizer)), locale_(std::move(locale)) {}

  bool isAvailable() override {
    world_.requireMainThread("SpeechRecognizer::isAvailable");
    return recognizer_->isAvailable();
  }

  std::shared_ptr<SpeechRecognitionTask> recognitionTask(std::shared_ptr<Request> request,
                                                         ResultHandler resultHandler) override {
    world_.requireMainThread("SpeechRecognizer::recognitionTask");
    const auto observed = std::dynamic_pointer_cast<ObservedRequest>(request);
    if (!observed) rules::broken("a recognition request of another platform");
    world_.report(WorldEvent::Kind::speech, "task started for " + locale_);
    auto progress = std::make_shared<Progress>();
    auto task = recognizer_->recognitionTask(
        observed->request(), [&world = world_, progress, handler = std::move(resultHandler)](
                                 const auto& result, const auto& error) {
          world.requireMainThread("a recognition result");
          progress->finished = progress->finished || error || (result && result->isFinal);
          world.report(WorldEvent::Kind::speech,
                       textOf(result, error) + (progress->cancelled ? " after the cancel" : ""));
          handler(result, error);
        });
    return std::make_shared<ObservedTask>(world_, std::move(task), std::move(progress));
  }

 private:
  World& world_;
  const std::shared_ptr<platform::SpeechRecognizer> recognizer_;
  const std::string locale_;
};

}  // namespace

ObservedSpeech::ObservedSpeech(World& world, platform::Speech& speech) : world_(world), speech_(speech) {}

std::shared_ptr<platform::SpeechRecognizer> ObservedSpeech::makeRecognizer(
    const std::string& localeIdentifier) {
  world_.requireMainThread("Speech::makeRecognizer");
  auto recognizer = speech_.makeRecognizer(localeIdentifier);
  if (!recognizer) {
    world_.report(WorldEvent::Kind::speech, "no recogniser for " + localeIdentifier);
    return nullptr;
  }
  return std::make_shared<ObservedRecognizer>(world_, std::move(recognizer), localeIdentifier);
}

std::shared_ptr<Request> ObservedSpeech::makeAudioBufferRecognitionRequest() {
  world_.requireMainThread("Speech::makeAudioBufferRecognitionRequest");
  return std::make_shared<ObservedRequest>(world_, speech_.makeAudioBufferRecognitionRequest());
}

void ObservedSpeech::requestAuthorization(std::function<void(platform::SpeechAuthorizationStatus)> handler) {
  speech_.requestAuthorization(std::move(handler));
}

}  // namespace tavelo::simulated
