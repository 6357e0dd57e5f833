#include "platform/recognizer/EngineSpeech.h"

#include <utility>

namespace tavelo::recognizer {

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
  const auto task = std::make_shared<RecognitionTask>(
      mainQueue_, buffered && buffered->shouldReportPartialResults(), std::move(resultHandler));
  if (buffered) {
    recognize(task, std::move(buffered));
  } else {
    task->fail();
  }
  return task;
}

}  // namespace tavelo::recognizer
