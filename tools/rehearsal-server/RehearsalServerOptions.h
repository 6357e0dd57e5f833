#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace tavelo::rehearsal {

/// What the rehearsal server answers, and how it misbehaves. A plain value.
struct RehearsalServerOptions {
  /// The port on the loopback address; 0 takes a free one.
  std::uint16_t port = 0;
  /// The text to recognise.
  std::string transcript;
  /// A file with the text instead, read again for each client; empty when `transcript` is used.
  std::string transcriptFile;
  /// Spreads the words over this many seconds of sound, not counting silence.
  double duration = 2.0;

  /// Delays each answer.
  std::chrono::milliseconds delay{0};
  /// Cuts the connection after answering this many frames of sound.
  std::optional<int> dropAfter;
  /// Answers with broken JSON.
  bool rubbish = false;
  /// Answers with arrays of one element.
  bool arrays = false;
  /// Does not know config and reset messages: takes them for 16 kHz sound and answers. After the end, closes
  /// only when it receives something more.
  bool noConfig = false;
  bool neverAnswer = false;

  /// Prints a line for each client and for each answer, with its JSON member and the words.
  bool log = false;
};

}  // namespace tavelo::rehearsal
