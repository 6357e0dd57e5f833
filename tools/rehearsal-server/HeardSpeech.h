#pragma once

#include <QByteArray>
#include <string>
#include <vector>

namespace tavelo::rehearsal {

/// Pretends to recognise a given transcript. The words appear evenly over `duration` of sound; silence does
/// not count, so a muted microphone gives no words.
class HeardSpeech final {
 public:
  /// A piece of 10 ms counts as speech when the mean distance of its samples from zero, out of 32768, reaches
  /// this. It is well above the hum of a quiet microphone and below a soft voice.
  static constexpr int threshold = 150;

  /// `duration` in seconds.
  HeardSpeech(const std::string& transcript, double duration);

  /// Takes signed 16-bit little-endian mono sound. An incomplete piece at the end waits for more.
  void listen(const QByteArray& sound, double sampleRate);

  /// The words recognised so far.
  std::string words() const;

 private:
  std::vector<std::string> words_;
  double duration_;
  double heard_ = 0;
  QByteArray waiting_;
};

}  // namespace tavelo::rehearsal
