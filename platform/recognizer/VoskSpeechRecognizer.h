#pragma once

#include <memory>

#include "platform/Speech.h"

namespace tavelo::platform {
class MainQueue;
}

namespace tavelo::recognizer {

class VoskEngine;

/// A recogniser on an engine that other recognisers of the locale share. Main thread.
class VoskSpeechRecognizer final : public platform::SpeechRecognizer {
 public:
  VoskSpeechRecognizer(platform::MainQueue& mainQueue, std::shared_ptr<VoskEngine> engine);

  /// Also true while the model is still loading: sound is kept until it is there.
  bool isAvailable() override;

  /// The request must come from this backend (`platform::BufferedRecognitionRequest`); any other is answered
  /// with an error.
  std::shared_ptr<platform::SpeechRecognitionTask> recognitionTask(
      std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest> request,
      ResultHandler resultHandler) override;

 private:
  platform::MainQueue& mainQueue_;
  std::shared_ptr<VoskEngine> engine_;
};

}  // namespace tavelo::recognizer
