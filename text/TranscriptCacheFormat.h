#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "text/TranscriptCacheEntry.h"

namespace tavelo {

/// Writes the cache file's JSON: indented by two spaces, keys sorted, a space on both sides of the colon,
/// slashes escaped, no line feed at the end. Any thread.
class TranscriptCacheEncoder final {
 public:
  /// Always well-formed UTF-8: each ill-formed sequence in a text becomes U+FFFD. "[]" if there are no
  /// entries.
  std::string encode(std::span<const TranscriptCacheEntry> entries) const;
};

/// Reads the cache file's JSON. Any thread.
class TranscriptCacheDecoder final {
 public:
  /// The entries in the order of the file. Absent unless all of `json` is one array of entries in strict
  /// JSON. Tolerates a byte-order mark and skips members with unknown names, whatever their values. Needs a
  /// small multiple of the text's length in memory, however deeply the text nests.
  std::optional<std::vector<TranscriptCacheEntry>> decode(std::string_view json) const;
};

}  // namespace tavelo
