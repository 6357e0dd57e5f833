#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "platform/MainQueue.h"
#include "platform/Speech.h"

namespace tavelo::recognizer {

/// One dictation, as seen by the caller, who may stop or cancel it, and by the engine, which reports to it.
///
/// Delivers reports to the result handler on the main queue, in order, with a space for each control
/// character of a transcript. Only the newest result waits there: it replaces one that was not delivered yet,
/// so an engine can never be ahead by more than one. Delivers nothing after a stop, a cancel, an error or the
/// final result. The engine must keep the task until it is over, and must end it when the engine itself ends.
class RecognitionTask final : public platform::SpeechRecognitionTask,
                              public std::enable_shared_from_this<RecognitionTask> {
 public:
  RecognitionTask(platform::MainQueue& mainQueue, bool partialResults,
                  platform::SpeechRecognizer::ResultHandler resultHandler);

  /// Has `ended` run once, when the task is over or just before its last report reaches the handler. Main
  /// thread, and so does `ended`.
  void onEnd(std::function<void()> ended);

  /// Has `incomplete` run once if the caller gets less than was said: the engine fails, or its final answer
  /// to a stop comes too late and says more than was delivered. `reason` is a sentence for the user.
  /// Main thread, and so does `incomplete`.
  void onIncomplete(std::function<void(const std::string& reason)> incomplete);

  /// Waits up to 250 ms for the engine's final answer or error, and delivers what was heard as one result
  /// that is not final. Nothing is delivered afterwards; a final answer or an error is held back. Off the
  /// main thread it does nothing. When the task is over it returns at once, and so it does inside a delivery,
  /// after which nothing more is delivered.
  void stop();

  /// Delivers nothing more. After a stop the engine may still answer, for `onIncomplete`; otherwise the task
  /// is over. Main thread.
  void cancel() override;

  /// The task is over, and nothing is delivered. Main thread.
  void end();

  /// Whether the task was cancelled or its last report delivered. The engine then stops working on it and
  /// lets it go. Any thread.
  bool isOver() const { return over_; }

  /// Reports the whole transcript so far. Does nothing when the caller wants no partial results or the
  /// transcript has not changed. Engine thread.
  void reportPartial(std::string_view heard);

  /// Reports the whole transcript as the final one. Engine thread.
  void reportFinal(std::string_view heard);

  /// Reports an error; `reason` is a sentence for the user. Any thread.
  void fail(const char* reason = "Bộ nhận diện giọng nói gặp lỗi.");

 private:
  /// What waits for the main queue. Both, if an error follows a result.
  struct Report {
    std::optional<platform::SpeechRecognitionResult> result;
    std::optional<platform::PlatformError> error;

    bool isLast() const { return error || (result && result->isFinal); }
  };

  void report(Report newer);
  void deliver();
  void call(const platform::SpeechRecognizer::ResultHandler& handler,
            const std::optional<platform::SpeechRecognitionResult>& result,
            const std::optional<platform::PlatformError>& error);
  void conclude(const Report& report);

  platform::MainQueue& mainQueue_;
  const bool partialResults_;
  std::atomic<bool> over_ = false;

  // Main thread.
  platform::SpeechRecognizer::ResultHandler resultHandler_;
  std::function<void()> ended_;
  std::function<void(const std::string& reason)> incomplete_;
  bool stopped_ = false;
  bool delivering_ = false;
  /// The newest transcript that the handler has; absent before the first.
  std::optional<std::string> delivered_;

  // Engine thread.
  std::string reported_;

  std::mutex mutex_;
  std::condition_variable reportedLast_;
  std::optional<Report> waiting_;
};

}  // namespace tavelo::recognizer
