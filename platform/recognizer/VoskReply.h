#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tavelo::recognizer {

/// Whether a reply may be a JSON array. One kind of server sends arrays; the library never does.
enum class ReplyArrays : std::uint8_t { refused, firstElementCounts };

/// One parsed JSON reply of a Vosk recogniser. A plain value; any thread.
struct VoskReply {
  /// The transcript of the running utterance; absent outside an utterance.
  std::optional<std::string> partial;
  /// The transcript of an utterance that ended; the first one if there are alternatives.
  std::optional<std::string> text;

  /// Parses a reply. Absent when it is not JSON, not UTF-8, or holds neither transcript as a string. Skips
  /// unknown members.
  static std::optional<VoskReply> parse(std::string_view json, ReplyArrays arrays = ReplyArrays::refused);
};

}  // namespace tavelo::recognizer
