#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "platform/BufferedRecognitionRequest.h"
#include "platform/recognizer/RecognitionTask.h"
#include "platform/recognizer/VoskDecoder.h"

namespace tavelo::recognizer {

/// The engine's side of one dictation: decodes the request's sound and reports to the task. Engine thread.
class VoskDictation final {
 public:
  /// Any thread.
  VoskDictation(std::shared_ptr<RecognitionTask> task,
                std::shared_ptr<platform::BufferedRecognitionRequest> request);

  /// What one step came to.
  enum class Progress : std::uint8_t {
    idle,    ///< nothing to do until the next wake
    worked,  ///< something was decoded; more may wait
    ended    ///< the task is over; the engine lets the dictation go
  };

  /// Decodes at most one waiting buffer with the model, which is null when it could not be loaded.
  Progress step(const LoadedModel* model);

  /// Any thread.
  RecognitionTask& task() const { return *task_; }

 private:
  Progress decodeNext(const LoadedModel& model);
  Progress fail();
  void finish();

  const std::shared_ptr<RecognitionTask> task_;
  const std::shared_ptr<platform::BufferedRecognitionRequest> request_;
  std::optional<VoskDecoder> decoder_;
  bool finished_ = false;
};

}  // namespace tavelo::recognizer
