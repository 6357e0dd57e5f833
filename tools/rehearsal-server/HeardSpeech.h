#pragma once

#include <QByteArray>
#include <string>
#include <vector>

namespace tavelo::rehearsal {

/// Makes a given transcript of sound that is not silent: each share of `duration` brings the next word, so
/// that a muted microphone brings none.
class HeardSpeech final {
 public:
  /// A piece of 10 ms counts when its samples are this far from zero in the mean, of 32768: well above the
  /// hum of a quiet microphone, below a soft voice.
  static constexpr int threshold = 150;

  /// `duration` in seconds.
  HeardSpeech(const std::string& transcript, double duration);

  /// Listens to signed 16-bit little-endian mono sound; the incomplete piece at the end waits for more.
  void listen(const QByteArray& sound, double sampleRate);

  /// The words up to now.
  std::string words() const;

 private:
  std::vector<std::string> words_;
  double duration_;
  double heard_ = 0;
  QByteArray waiting_;
};

}  // namespace tavelo::rehearsal
