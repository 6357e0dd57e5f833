#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/BufferedRecognitionRequest.h"
#include "platform/Speech.h"
#include "platform/recognizer/VoskDecoder.h"

namespace tavelo::platform {
class MainQueue;
}

namespace tavelo::recognizer {

class VoskEngine;

/// One recognition: takes the sound out of its request, decodes it on the engine's thread and reports on the
/// main queue. Shared by the engine, until it ends, and by whoever asked for it.
class VoskDictation final : public platform::SpeechRecognitionTask,
                            public std::enable_shared_from_this<VoskDictation> {
 public:
  /// What one step came to.
  enum class Progress : std::uint8_t {
    idle,    ///< nothing to do until the next wake
    worked,  ///< something was decoded; more may wait
    ended    ///< cancelled, or its last report has been delivered: to be let go
  };

  VoskDictation(platform::MainQueue& mainQueue, std::shared_ptr<platform::BufferedRecognitionRequest> request,
                platform::SpeechRecognizer::ResultHandler resultHandler);

  /// Hands the dictation to the engine. Once; main thread.
  void begin(const std::shared_ptr<VoskEngine>& engine);

  /// Nothing is reported after this, and waiting sound is not decoded. Main thread.
  void cancel() override;

  /// Decodes at most one waiting buffer with the model, which is null when it could not be loaded. Engine
  /// thread.
  Progress step(const LoadedModel* model);

 private:
  Progress decodeNext(const LoadedModel& model);
  Progress fail();
  void finish();
  void report(std::optional<platform::SpeechRecognitionResult> result,
              std::optional<platform::PlatformError> error);
  void deliver(const std::optional<platform::SpeechRecognitionResult>& result,
               const std::optional<platform::PlatformError>& error);

  platform::MainQueue& mainQueue_;
  const std::shared_ptr<platform::BufferedRecognitionRequest> request_;
  const bool reportsPartialResults_;
  std::atomic<bool> cancelled_ = false;

  // Main thread.
  platform::SpeechRecognizer::ResultHandler resultHandler_;
  std::weak_ptr<VoskEngine> engine_;

  // Engine thread.
  std::optional<VoskDecoder> decoder_;
  std::string reported_;
  bool finished_ = false;
};

}  // namespace tavelo::recognizer
