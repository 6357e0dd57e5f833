#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tavelo::recognition {

/// One parsed JSON reply of a Vosk recogniser, the library or a server. A plain value; any thread.
struct VoskReply {
  /// The transcript of the running utterance; absent outside an utterance.
  std::optional<std::string> partial;
  /// The transcript of an utterance that ended; the first one if there are alternatives.
  std::optional<std::string> text;

  /// Parses a reply. Absent when it is not JSON, not UTF-8, or holds neither transcript as a string. Skips
  /// unknown members.
  static std::optional<VoskReply> parse(std::string_view json);

  /// The same for a server. One kind of server sends arrays, whose first element counts.
  static std::optional<VoskReply> parseFromServer(std::string_view json);
};

}  // namespace tavelo::recognition
