#include "platform/recognizer/VoskDecoder.h"

#include <cmath>
#include <cstddef>
#include <span>
#include <utility>

#include "platform/recognizer/MixDown.h"
#include "platform/recognizer/VoskReply.h"

namespace tavelo::recognizer {
bool VoskDecoder::decode(const platform::AudioBuffer& buffer) {
  const std::size_t channels = buffer.format.channelCount;
  if (channels == 0 || !prepareFor(buffer.format.sampleRate)) return false;
  std::span<const std::int16_t> samples = buffer.samples;
  if (channels > 1) {
    mixDown(samples, channels, mono_);
    samples = mono_;
  }
  switch (recognizer_->acceptWaveform(samples)) {
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

/// A recogniser keeps its rate; when the input device changed in mid-dictation, another one goes on.
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
  // Between utterances the answer is an empty "text" without a "partial".
  transcript_.setPartial(std::move(read->partial).value_or(std::string{}));
  return true;
}

}  // namespace tavelo::recognizer
