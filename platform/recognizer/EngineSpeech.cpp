#include "platform/recognizer/EngineSpeech.h"

#include <utility>

namespace tavelo::recognizer {
namespace {

constexpr const char* title = "Tavelo chưa nghe được";
constexpr const char* notReady =
    "Bộ nhận diện giọng nói chưa sẵn sàng nên chưa nghe được gì. Hãy thử lại sau.";

/// Tells the user if a dictation ends before its engine was ready.
class ReadinessWatch final {
 public:
  ReadinessWatch(std::shared_ptr<const Outcome> engine, platform::UserNotifications* notifications)
      : engine_(std::move(engine)), notifications_(notifications) {}

  void dictationEnds() const {
    if (notifications_ != nullptr && engine_->state() != Outcome::State::succeeded)
      notifications_->post(title, notReady);
  }

 private:
  std::shared_ptr<const Outcome> engine_;
  platform::UserNotifications* notifications_;
};

/// The caller's side of a task.
class WatchedTask final : public platform::SpeechRecognitionTask {
 public:
  WatchedTask(std::shared_ptr<RecognitionTask> task,
              std::shared_ptr<platform::BufferedRecognitionRequest> request, ReadinessWatch watch)
      : task_(std::move(task)), request_(std::move(request)), watch_(std::move(watch)) {}

  void cancel() override {
    // When the sound has not ended, the dictation is discarded, and nobody waits for its text.
    if (!task_->isOver() && request_->hasEnded()) watch_.dictationEnds();
    task_->cancel();
  }

 private:
  const std::shared_ptr<RecognitionTask> task_;
  const std::shared_ptr<platform::BufferedRecognitionRequest> request_;
  const ReadinessWatch watch_;
};

}  // namespace

std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest>
EngineSpeech::makeAudioBufferRecognitionRequest() {
  return std::make_shared<platform::BufferedRecognitionRequest>();
}

void EngineSpeech::requestAuthorization(std::function<void(platform::SpeechAuthorizationStatus)> handler) {
  mainQueue_.async(lifetime_.guard([handler = std::move(handler)] {
    if (handler) handler(platform::SpeechAuthorizationStatus::authorized);
  }));
}

std::shared_ptr<platform::SpeechRecognitionTask> EngineRecognizer::recognitionTask(
    std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest> request, ResultHandler resultHandler) {
  auto buffered = std::dynamic_pointer_cast<platform::BufferedRecognitionRequest>(std::move(request));
  if (!buffered) {
    const auto refused = std::make_shared<RecognitionTask>(mainQueue_, false, std::move(resultHandler));
    refused->fail();
    return refused;
  }
  const ReadinessWatch watch{engine(), notifications_};
  const auto task = std::make_shared<RecognitionTask>(
      mainQueue_, buffered->shouldReportPartialResults(),
      [watch, handler = std::move(resultHandler)](const auto& result, const auto& error) {
        if (error) watch.dictationEnds();
        handler(result, error);
      });
  recognize(task, buffered);
  return std::make_shared<WatchedTask>(task, std::move(buffered), watch);
}

}  // namespace tavelo::recognizer
