#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tavelo::recognizer {

/// One line of the recogniser process. A plain value.
struct ProcessReply {
  enum class Kind : std::uint8_t { other, ready, loadFailed, text, closed, taken, final, failed };

  Kind kind = Kind::other;
  /// The dictation that it is about; 0 for none.
  std::uint32_t dictation = 0;
  /// A transcript, a reason, or the engine with its version.
  std::string text;
  /// The sample at which a closed segment ended, or up to which sound was taken, counted from the dictation's
  /// beginning.
  std::uint64_t until = 0;

  /// Absent if the line is not what a recogniser process writes. Unknown members and states are skipped.
  static std::optional<ProcessReply> parse(std::string_view line);
};

}  // namespace tavelo::recognizer
