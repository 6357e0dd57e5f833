#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/AudioBuffer.h"
#include "platform/PlatformError.h"

namespace tavelo::platform {

/// Whether the program may recognise speech; raw values are the platform's.
enum class SpeechAuthorizationStatus : std::int32_t {
  notDetermined = 0,
  denied = 1,
  restricted = 2,
  authorized = 3
};

/// What the recogniser has made of the sound so far.
struct SpeechRecognitionResult {
  /// The whole transcript of the best transcription, not only what is new; UTF-8.
  std::string formattedString;
  /// Whether this is the last result of its task.
  bool isFinal = false;
};

/// Carries sound to a recogniser. Audio may be appended before the engine is ready; nothing is dropped within
/// the backend's bound. Shared between the owner, the capture thread and the recogniser.
class SpeechAudioBufferRecognitionRequest {
 public:
  virtual ~SpeechAudioBufferRecognitionRequest() = default;

  /// Whether results are wanted while the speech goes on; set before the task is made. Main thread.
  virtual void setShouldReportPartialResults(bool wanted) = 0;

  /// Adds captured sound; never blocks. After `endAudio` it does nothing. Any thread.
  virtual void append(const AudioBuffer& buffer) = 0;

  /// Marks the end of the sound. Any thread.
  virtual void endAudio() = 0;
};

/// A running recognition. Dropping it does not end it. Main thread.
class SpeechRecognitionTask {
 public:
  virtual ~SpeechRecognitionTask() = default;

  /// Ends the recognition at once, without waiting for the engine. A result that is already on its way may
  /// still come.
  virtual void cancel() = 0;
};

/// A recogniser for one locale. Main thread. A running task does not need it any more.
class SpeechRecognizer {
 public:
  /// Called on the main queue with a result, an error, or both; after a final result or an error no more
  /// comes.
  using ResultHandler =
      std::function<void(const std::optional<SpeechRecognitionResult>&, const std::optional<PlatformError>&)>;

  virtual ~SpeechRecognizer() = default;

  /// Whether recognition would work now; answered within 300 ms.
  virtual bool isAvailable() = 0;

  /// Begins to recognise what `request` carries. Never null; what goes wrong arrives as an error result.
  virtual std::shared_ptr<SpeechRecognitionTask> recognitionTask(
      std::shared_ptr<SpeechAudioBufferRecognitionRequest> request, ResultHandler resultHandler) = 0;
};

/// Speech recognition and the permission for it.
class Speech {
 public:
  virtual ~Speech() = default;

  /// A recogniser for a locale such as "vi_VN"; null when there is none for it. Main thread.
  virtual std::shared_ptr<SpeechRecognizer> makeRecognizer(const std::string& localeIdentifier) = 0;

  /// A new request to append sound to. Never null. Main thread.
  virtual std::shared_ptr<SpeechAudioBufferRecognitionRequest> makeAudioBufferRecognitionRequest() = 0;

  /// Asks for the permission, with a prompt only when it was never decided; the answer comes after this call,
  /// once, on any thread. Any thread: the microphone's answer, which comes on any, leads here.
  virtual void requestAuthorization(std::function<void(SpeechAuthorizationStatus)> handler) = 0;
};

}  // namespace tavelo::platform
