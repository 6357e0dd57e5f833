#pragma once

#include <memory>
#include <optional>

#import <Speech/Speech.h>

#include "platform/MainQueue.h"
#include "platform/Speech.h"

namespace tavelo::macos {

/// A task of the system's recogniser, tied to its own result handler: what another task says never reaches
/// it. Main thread.
class MacRecognitionTask final : public platform::SpeechRecognitionTask,
                                 public std::enable_shared_from_this<MacRecognitionTask> {
 public:
  using ResultHandler = platform::SpeechRecognizer::ResultHandler;

  explicit MacRecognitionTask(platform::MainQueue& mainQueue, ResultHandler handler)
      : mainQueue_(mainQueue), handler_(std::move(handler)) {}

  /// Begins; keeps `recognizer`, which the system may let go otherwise.
  void begin(SFSpeechRecognizer* recognizer, SFSpeechAudioBufferRecognitionRequest* request);

  void cancel() override;

  /// Ends it with an error.
  void fail(const std::string& reason);

 private:
  using Result = std::optional<platform::SpeechRecognitionResult>;
  using Error = std::optional<platform::PlatformError>;

  void deliver(const Result& result, const Error& error);

  platform::MainQueue& mainQueue_;
  ResultHandler handler_;
  SFSpeechRecognizer* recognizer_ = nil;
  /// Keeps the handler, which keeps this object; so it is let go at the end.
  SFSpeechRecognitionTask* task_ = nil;
};

}  // namespace tavelo::macos
