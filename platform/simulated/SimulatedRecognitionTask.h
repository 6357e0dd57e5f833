#pragma once

#include <memory>
#include <string>

#include "platform/Speech.h"
#include "platform/simulated/RecognitionScript.h"

namespace tavelo::simulated {

class SimulatedLoop;
class SimulatedRecognitionRequest;

/// A recognition that follows a script; it goes on when the caller drops it. Keeps its request until it has
/// finished or was cancelled. Main thread.
class SimulatedRecognitionTask final : public platform::SpeechRecognitionTask,
                                       public std::enable_shared_from_this<SimulatedRecognitionTask> {
 public:
  SimulatedRecognitionTask(SimulatedLoop& loop, std::shared_ptr<SimulatedRecognitionRequest> request,
                           platform::SpeechRecognizer::ResultHandler handler, RecognitionScript script);

  /// Schedules the script, from now. Called once.
  void begin();

  void cancel() override;

  /// Answers now. False when it cannot any more; see `RecognitionScript`.
  bool answer(const RecognitionStep& step);

  bool isCancelled() const { return cancelled_; }
  /// A final result or an error was delivered.
  bool isFinished() const { return finished_; }

 private:
  SimulatedLoop& loop_;
  std::shared_ptr<SimulatedRecognitionRequest> request_;
  platform::SpeechRecognizer::ResultHandler handler_;
  const RecognitionScript script_;
  const bool partialResults_;
  bool cancelled_ = false;
  bool finished_ = false;
};

}  // namespace tavelo::simulated
