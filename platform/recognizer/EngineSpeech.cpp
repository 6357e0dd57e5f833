#include "platform/recognizer/EngineSpeech.h"

#include <utility>

namespace tavelo::recognizer {
namespace {

constexpr const char* notHeard = "Tavelo chưa nghe được";
constexpr const char* nothingHeard = " Tavelo chưa nghe được gì. Lệnh “tavelo doctor” cho biết thêm.";
constexpr const char* unusable = "Bộ nhận diện giọng nói không chạy được.";
constexpr const char* notAllHeard = "Tavelo chưa nghe hết";
constexpr const char* endMissing = " Phần cuối câu nói bị thiếu. Hãy xem lại và nói lại phần đó.";

/// Tells the user why a dictation brought less than was said.
class DictationWatch final {
 public:
  DictationWatch(std::shared_ptr<const Outcome> engine, std::shared_ptr<WaitingNotice> notice)
      : engine_(std::move(engine)), notice_(std::move(notice)) {}

  bool engineIsReady() const { return engine_->state() == Outcome::State::succeeded; }

  /// `reason` is a sentence for the user.
  void tell(const std::string& reason) const {
    if (!notice_) return;
    const auto state = engine_->state();
    if (state == Outcome::State::pending) return notice_->miss(engine_);
    const bool isReady = state == Outcome::State::succeeded;
    notice_->notifications().post(isReady ? notAllHeard : notHeard,
                                  reason + (isReady ? endMissing : nothingHeard));
  }

 private:
  std::shared_ptr<const Outcome> engine_;
  std::shared_ptr<WaitingNotice> notice_;
};

/// The caller's side of a task.
class WatchedTask final : public platform::SpeechRecognitionTask {
 public:
  WatchedTask(std::shared_ptr<RecognitionTask> task,
              std::shared_ptr<platform::BufferedRecognitionRequest> request, DictationWatch watch)
      : task_(std::move(task)), request_(std::move(request)), watch_(std::move(watch)) {}

  void cancel() override {
    // When the sound has not ended, the dictation is discarded, and nobody waits for its text.
    if (task_->isOver() || !request_->hasEnded() || watch_.engineIsReady()) return task_->cancel();
    task_->end();
    watch_.tell(unusable);
  }

 private:
  const std::shared_ptr<RecognitionTask> task_;
  const std::shared_ptr<platform::BufferedRecognitionRequest> request_;
  const DictationWatch watch_;
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
  const auto outcome = engine();
  const DictationWatch watch{outcome, notice_};
  const auto task = std::make_shared<RecognitionTask>(mainQueue_, buffered->shouldReportPartialResults(),
                                                      std::move(resultHandler));
  task->onIncomplete([watch](const std::string& reason) { watch.tell(reason); });
  buffered->onEnd([weak = std::weak_ptr(task)] {
    if (const auto running = weak.lock()) running->stop();
  });
  recognize(task, buffered);
  if (notice_) notice_->begin(outcome, task);
  return std::make_shared<WatchedTask>(task, std::move(buffered), watch);
}

}  // namespace tavelo::recognizer
