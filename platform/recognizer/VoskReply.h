#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tavelo::recognizer {

/// Whether a reply may be a JSON array; the library never sends one, one kind of server does.
enum class ReplyArrays : std::uint8_t { refused, firstElementCounts };

/// One JSON reply of a Vosk recogniser, read. A plain value; any thread.
struct VoskReply {
  /// The transcript of the utterance that goes on; absent outside an utterance.
  std::optional<std::string> partial;
  /// The transcript of an utterance that ended; of several alternatives the first.
  std::optional<std::string> text;

  /// Reads a reply. Absent when it is no JSON, not UTF-8, or holds neither transcript as a string; members
  /// that we do not know are skipped.
  static std::optional<VoskReply> parse(std::string_view json, ReplyArrays arrays = ReplyArrays::refused);
};

}  // namespace tavelo::recognizer
