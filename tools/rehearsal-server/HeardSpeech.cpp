#include "tools/rehearsal-server/HeardSpeech.h"

#include <QtEndian>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <sstream>

namespace tavelo::rehearsal {
namespace {

constexpr double pieceSeconds = 0.01;

/// The mean distance of the samples from zero.
double levelOf(const char* samples, qsizetype count) {
  double sum = 0;
  for (qsizetype i = 0; i < count; ++i) sum += std::abs(qFromLittleEndian<std::int16_t>(samples + 2 * i));
  return sum / static_cast<double>(count);
}

}  // namespace

HeardSpeech::HeardSpeech(const std::string& transcript, double duration) : duration_(duration) {
  std::istringstream stream{transcript};
  for (std::string word; stream >> word;) words_.push_back(word);
}

void HeardSpeech::listen(const QByteArray& sound, double sampleRate) {
  waiting_ += sound;
  const auto samples = std::max<qsizetype>(1, std::lround(sampleRate * pieceSeconds));
  qsizetype at = 0;
  for (; waiting_.size() - at >= samples * 2; at += samples * 2) {
    if (levelOf(waiting_.constData() + at, samples) >= threshold) heard_ += pieceSeconds;
  }
  waiting_.remove(0, at);
}

std::string HeardSpeech::words() const {
  // The sum of many hundredths may come out slightly too small.
  constexpr double rounding = 1e-6;
  const double share =
      duration_ > 0 ? std::min(1.0, heard_ / duration_ + rounding) : (heard_ > 0 ? 1.0 : 0.0);
  const auto count = static_cast<std::size_t>(share * static_cast<double>(words_.size()));
  std::string text;
  for (std::size_t i = 0; i < count; ++i) text += (i > 0 ? " " : "") + words_[i];
  return text;
}

}  // namespace tavelo::rehearsal
