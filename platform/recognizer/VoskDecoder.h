#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/AudioBuffer.h"
#include "platform/recognizer/RunningTranscript.h"
#include "platform/recognizer/VoskLibrary.h"

namespace tavelo::recognizer {

/// Decodes the sound of one dictation. Engine thread only; must not outlive the model.
class VoskDecoder final {
 public:
  explicit VoskDecoder(const LoadedModel& model) : model_(model) {}

  /// Decodes one buffer in one call of the library, its channels mixed down, and reads the answer. False when
  /// the recogniser failed, answered nonsense or could not be made; the decoder is of no use then.
  bool decode(const platform::AudioBuffer& buffer);

  /// Takes the answer to the end of the sound. False as above.
  bool finish();

  /// The transcript as it stands.
  std::string transcript() const { return transcript_.text(); }

 private:
  bool prepareFor(double sampleRate);
  bool endUtterance(const std::string& reply);
  bool continueUtterance(const std::string& reply);

  const LoadedModel& model_;
  RunningTranscript transcript_;
  double sampleRate_ = 0;
  std::unique_ptr<StreamRecognizer> recognizer_;
  std::vector<std::int16_t> mono_;
};

}  // namespace tavelo::recognizer
