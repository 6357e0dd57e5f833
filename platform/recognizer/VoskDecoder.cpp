#include "platform/recognizer/VoskDecoder.h"

#include <cmath>
#include <utility>

#include "platform/recognizer/VoskReply.h"

namespace tavelo::recognizer {

bool VoskDecoder::decode(const platform::AudioBuffer& buffer) {
  if (buffer.format.channelCount != 1 || !prepareFor(buffer.format.sampleRate)) return false;
  switch (recognizer_->acceptWaveform(buffer.samples)) {
    case Waveform::utteranceEnded:
      return endUtterance(recognizer_->result());
    case Waveform::utteranceGoesOn:
      return continueUtterance(recognizer_->partialResult());
    case Waveform::failed:
      break;
  }
  return false;
}

bool VoskDecoder::finish() {
  if (!recognizer_) return true;
  return endUtterance(std::exchange(recognizer_, nullptr)->finalResult());
}

/// A recogniser has a fixed sample rate. When the input device changes during a dictation, a new recogniser
/// continues.
bool VoskDecoder::prepareFor(double sampleRate) {
  if (!std::isfinite(sampleRate) || sampleRate <= 0) return false;
  if (recognizer_ && sampleRate == sampleRate_) return true;
  if (!finish()) return false;
  sampleRate_ = sampleRate;
  recognizer_ = model_.library().makeRecognizer(model_, sampleRate);
  return recognizer_ != nullptr;
}

bool VoskDecoder::endUtterance(const std::string& reply) {
  const auto read = VoskReply::parse(reply);
  if (!read || !read->text) return false;
  transcript_.endUtterance(*read->text);
  return true;
}

bool VoskDecoder::continueUtterance(const std::string& reply) {
  auto read = VoskReply::parse(reply);
  if (!read) return false;
  // Between utterances the library answers with an empty "text" and no "partial".
  transcript_.setPartial(std::move(read->partial).value_or(std::string{}));
  return true;
}

}  // namespace tavelo::recognizer
