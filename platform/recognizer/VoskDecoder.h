#pragma once

#include <memory>
#include <string>

#include "platform/AudioBuffer.h"
#include "platform/recognizer/RunningTranscript.h"
#include "platform/recognizer/VoskLibrary.h"

namespace tavelo::recognizer {

/// Decodes the sound of one dictation. Engine thread only; must not outlive the model.
class VoskDecoder final {
 public:
  explicit VoskDecoder(const LoadedModel& model) : model_(model) {}

  /// Decodes one mono buffer in one library call and reads the answer. Returns false when the recogniser
  /// could not be made, failed or gave an invalid answer; do not use the decoder any further then.
  bool decode(const platform::AudioBuffer& buffer);

  /// Ends the sound and reads the last answer. Returns false as `decode` does.
  bool finish();

  /// The whole transcript so far.
  std::string transcript() const { return transcript_.text(); }

 private:
  bool prepareFor(double sampleRate);
  bool endUtterance(const std::string& reply);
  bool continueUtterance(const std::string& reply);

  const LoadedModel& model_;
  RunningTranscript transcript_;
  double sampleRate_ = 0;
  std::unique_ptr<StreamRecognizer> recognizer_;
};

}  // namespace tavelo::recognizer
