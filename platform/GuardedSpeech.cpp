#include "platform/GuardedSpeech.h"

#include <optional>
#include <utility>

namespace tavelo::platform {
namespace {

constexpr const char* title = "Tavelo";
constexpr const char* passwordText = "Tavelo không nghe khi con trỏ đang ở ô mật khẩu.";
constexpr const char* lockedText = "Tavelo không nghe khi màn hình đang khóa.";

}  // namespace

/// One dictation, watched until it ends or nobody holds it any more.
class GuardedSpeech::Task final : public SpeechRecognitionTask, public std::enable_shared_from_this<Task> {
 public:
  Task(const Watch& watch, SpeechRecognizer::ResultHandler handler)
      : watch_(watch), handler_(std::make_shared<SpeechRecognizer::ResultHandler>(std::move(handler))) {}

  void start(SpeechRecognizer& recognizer, std::shared_ptr<SpeechAudioBufferRecognitionRequest> request) {
    // The task is not captured: it may be dropped while the recognition goes on.
    task_ = recognizer.recognitionTask(std::move(request),
                                       [handler = handler_](const auto& result, const auto& error) {
                                         // A copy, because the handler may cancel this dictation.
                                         if (const auto call = *handler) call(result, error);
                                       });
    ask();
  }

  void cancel() override {
    *handler_ = nullptr;
    task_->cancel();
  }

 private:
  void ask() {
    watch_.guard.ask([weak = weak_from_this()](Secret secret) {
      if (const auto self = weak.lock()) self->hear(secret);
    });
  }

  void hear(Secret secret) {
    if (!*handler_) return;
    if (secret == Secret::none || secret == Secret::setUp) {
      watch_.mainQueue.asyncAfter(interval, [weak = weak_from_this()] {
        const auto self = weak.lock();
        if (self && *self->handler_) self->ask();
      });
      return;
    }
    // Nothing is delivered inside `recognitionTask`.
    watch_.mainQueue.async([weak = weak_from_this(), secret] {
      if (const auto self = weak.lock()) self->end(secret);
    });
  }

  void end(Secret secret) {
    const auto handler = std::exchange(*handler_, nullptr);
    if (!handler) return;
    task_->cancel();
    watch_.explain(secret);
    // The empty transcript takes the place of what was heard.
    handler(SpeechRecognitionResult{}, PlatformError{"secret"});
  }

  const Watch watch_;
  /// Empty once the dictation has been cancelled.
  const std::shared_ptr<SpeechRecognizer::ResultHandler> handler_;
  std::shared_ptr<SpeechRecognitionTask> task_;
};

class GuardedSpeech::Recognizer final : public SpeechRecognizer {
 public:
  Recognizer(std::shared_ptr<SpeechRecognizer> recognizer, const Watch& watch)
      : recognizer_(std::move(recognizer)), watch_(watch) {}

  bool isAvailable() override { return recognizer_->isAvailable(); }

  std::shared_ptr<SpeechRecognitionTask> recognitionTask(
      std::shared_ptr<SpeechAudioBufferRecognitionRequest> request, ResultHandler resultHandler) override {
    auto task = std::make_shared<Task>(watch_, std::move(resultHandler));
    task->start(*recognizer_, std::move(request));
    return task;
  }

 private:
  const std::shared_ptr<SpeechRecognizer> recognizer_;
  const Watch watch_;
};

void GuardedSpeech::Watch::explain(Secret secret) const {
  // The set-up window says itself what it waits for.
  if (secret == Secret::setUp) return;
  const auto key = keyboard.createKeyboardEvent(EventSourceState::combinedSession, keycodes::v, true);
  if (key && (key->flags & keyflags::secondaryFn) != 0) return;
  notifications.post(title, secret == Secret::passwordField ? passwordText : lockedText);
}

std::shared_ptr<SpeechRecognizer> GuardedSpeech::makeRecognizer(const std::string& localeIdentifier) {
  auto recognizer = speech_.makeRecognizer(localeIdentifier);
  if (!recognizer) return nullptr;
  return std::make_shared<Recognizer>(std::move(recognizer), watch_);
}

std::shared_ptr<SpeechAudioBufferRecognitionRequest> GuardedSpeech::makeAudioBufferRecognitionRequest() {
  return speech_.makeAudioBufferRecognitionRequest();
}

void GuardedSpeech::requestAuthorization(std::function<void(SpeechAuthorizationStatus)> handler) {
  auto answer = lifetime_.guard([this, handler = std::move(handler)](SpeechAuthorizationStatus status) {
    watch_.guard.ask(lifetime_.guard([this, handler, status](Secret secret) {
      if (secret == Secret::none) return handler(status);
      watch_.explain(secret);
    }));
  });
  speech_.requestAuthorization(
      [&queue = watch_.mainQueue, answer = std::move(answer)](SpeechAuthorizationStatus status) {
        // The answer may come on any thread.
        queue.async([answer, status]() mutable { answer(status); });
      });
}

}  // namespace tavelo::platform
