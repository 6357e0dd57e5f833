#pragma once

#include <memory>
#include <string>

#include "platform/Speech.h"
#include "platform/simulated/RecognitionScript.h"

namespace tavelo::simulated {

class SimulatedLoop;
class SimulatedRecognitionRequest;

/// A recognition that follows a script. It goes on when the caller drops it, and keeps its request until it
/// finishes or is cancelled. Main thread.
class SimulatedRecognitionTask final : public platform::SpeechRecognitionTask,
                                       public std::enable_shared_from_this<SimulatedRecognitionTask> {
 public:
  SimulatedRecognitionTask(SimulatedLoop& loop, std::shared_ptr<SimulatedRecognitionRequest> request,
                           platform::SpeechRecognizer::ResultHandler handler, RecognitionScript script);

  /// Starts the script now. Call it once.
  void begin();

  void cancel() override;

  /// Answers now. False after the end, and after a cancel unless the script still answers then.
  bool answer(const RecognitionStep& step);

  bool isCancelled() const { return cancelled_; }

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
