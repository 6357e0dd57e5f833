#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace tavelo::rehearsal {

/// What a rehearsal server answers, and how it misbehaves. A plain value.
struct RehearsalServerOptions {
  /// The port on the loopback address; 0 takes a free one.
  std::uint16_t port = 0;
  /// What was said, once enough sound was heard.
  std::string transcript;
  /// Where the transcript stands instead, read anew for each client; empty when it is in `transcript`.
  std::string transcriptFile;
  /// Seconds of sound, silence not counted, over which the transcript's words are spread.
  double duration = 2.0;

  /// Each answer comes that late.
  std::chrono::milliseconds delay{0};
  /// The connection is cut behind the answer to this many frames of sound.
  std::optional<int> dropAfter;
  /// Answers are broken JSON.
  bool rubbish = false;
  /// Answers are lists of one element.
  bool arrays = false;
  /// Knows neither settings nor reset: takes them for sound at 16 kHz and answers. Closes after the end only
  /// when something more comes.
  bool noConfig = false;
  bool neverAnswer = false;

  /// Prints a line for each client, and one for each answer to it: the member and the words.
  bool log = false;
};

}  // namespace tavelo::rehearsal
