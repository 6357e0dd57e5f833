#pragma once

#include <QUrl>
#include <optional>
#include <string>

namespace tavelo::recognizer {

/// Where the recognition server is, as `TAVELO_RECOGNIZER` says: `ws://host[:port]` or `wss://host[:port]`,
/// with a path if the server wants one. A plain value.
struct VoskServerAddress {
  /// Absent when the text is no such address.
  std::optional<QUrl> url;
  /// Why not, in English, for the user to read; empty otherwise.
  std::string failure;

  /// Without a port it is the servers' usual one, 2700, or HTTPS's for wss.
  static VoskServerAddress parse(const std::string& text);
};

}  // namespace tavelo::recognizer
