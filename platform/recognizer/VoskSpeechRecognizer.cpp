#include "platform/recognizer/VoskSpeechRecognizer.h"

#include <chrono>
#include <utility>

#include "platform/recognizer/VoskDictation.h"
#include "platform/recognizer/VoskEngine.h"

namespace tavelo::recognizer {
namespace {

/// How long the main thread may wait to learn whether the model loads; a missing library or a broken model
/// shows far sooner.
constexpr std::chrono::milliseconds availabilityWait{250};

}  // namespace

VoskSpeechRecognizer::VoskSpeechRecognizer(platform::MainQueue& mainQueue, std::shared_ptr<VoskEngine> engine)
    : mainQueue_(mainQueue), engine_(std::move(engine)) {}

bool VoskSpeechRecognizer::isAvailable() {
  return engine_->waitUntilLoaded(availabilityWait) != VoskEngine::State::failed;
}

std::shared_ptr<platform::SpeechRecognitionTask> VoskSpeechRecognizer::recognitionTask(
    std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest> request, ResultHandler resultHandler) {
  auto dictation = std::make_shared<VoskDictation>(
      mainQueue_, std::dynamic_pointer_cast<platform::BufferedRecognitionRequest>(std::move(request)),
      std::move(resultHandler));
  dictation->begin(engine_);
  return dictation;
}

}  // namespace tavelo::recognizer
