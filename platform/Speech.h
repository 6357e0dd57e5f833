#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/AudioBuffer.h"
#include "platform/PlatformError.h"

namespace tavelo::platform {

/// Whether the program may recognise speech, with macOS's raw values.
enum class SpeechAuthorizationStatus : std::int32_t {
  notDetermined = 0,
  denied = 1,
  restricted = 2,
  authorized = 3
};

/// What the recogniser has heard so far.
struct SpeechRecognitionResult {
  /// The whole best transcript, not only its new part; UTF-8.
  std::string formattedString;
  /// Whether this is the last result of its task.
  bool isFinal = false;
};

/// Carries sound to a recogniser. Sound may be appended before the engine is ready; the backend keeps it up
/// to a bound. Shared by its owner, the capture thread and the recogniser.
class SpeechAudioBufferRecognitionRequest {
 public:
  virtual ~SpeechAudioBufferRecognitionRequest() = default;

  /// Whether to report results while the speech goes on. Set it before making the task. Main thread.
  virtual void setShouldReportPartialResults(bool wanted) = 0;

  /// Adds captured sound. Never blocks; does nothing after `endAudio`. Any thread.
  virtual void append(const AudioBuffer& buffer) = 0;

  /// Marks the end of the sound. Any thread. On the main thread a backend may wait up to 250 ms for the
  /// recogniser and call the task's handler, inside this call, with one result that is not final; the task
  /// then says nothing more.
  virtual void endAudio() = 0;
};

/// A running recognition. Dropping it does not end it. Main thread.
class SpeechRecognitionTask {
 public:
  virtual ~SpeechRecognitionTask() = default;

  /// Ends the recognition without waiting for the engine. A result already on its way may still arrive.
  virtual void cancel() = 0;
};

/// A recogniser for one locale. May be dropped while its tasks run. Main thread.
class SpeechRecognizer {
 public:
  /// Called on the main queue with a result, an error, or both. Not called again after a final result or an
  /// error.
  using ResultHandler =
      std::function<void(const std::optional<SpeechRecognitionResult>&, const std::optional<PlatformError>&)>;

  virtual ~SpeechRecognizer() = default;

  /// Whether recognition would work now. Answers within 300 ms.
  virtual bool isAvailable() = 0;

  /// Starts recognising the sound of `request`. Never null; failures arrive as an error in `resultHandler`.
  virtual std::shared_ptr<SpeechRecognitionTask> recognitionTask(
      std::shared_ptr<SpeechAudioBufferRecognitionRequest> request, ResultHandler resultHandler) = 0;
};

/// Speech recognition and the permission for it.
class Speech {
 public:
  virtual ~Speech() = default;

  /// Makes a recogniser for a locale such as "vi_VN". Null if there is none for it. Main thread.
  virtual std::shared_ptr<SpeechRecognizer> makeRecognizer(const std::string& localeIdentifier) = 0;

  /// Makes a request to append sound to. Never null. Main thread.
  virtual std::shared_ptr<SpeechAudioBufferRecognitionRequest> makeAudioBufferRecognitionRequest() = 0;

  /// Asks for the permission; prompts the user only if undecided. Calls `handler` at most once, after this
  /// call, on any thread. Any thread, because the program calls it from the microphone's answer, which
  /// arrives on any thread.
  virtual void requestAuthorization(std::function<void(SpeechAuthorizationStatus)> handler) = 0;
};

}  // namespace tavelo::platform
