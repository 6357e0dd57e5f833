#pragma once

#include <span>
#include <string>

#include "text/TranscriptCacheEntry.h"

namespace tavelo {

/// Writes the cache file's JSON: indented by two spaces, keys sorted, a space on both sides of the colon,
/// solidus escaped, no line feed at the end. Any thread.
class TranscriptCacheEncoder final {
 public:
  /// Well-formed UTF-8: each ill-formed sequence of a text is written as U+FFFD. "[]" when there are no
  /// entries.
  std::string encode(std::span<const TranscriptCacheEntry> entries) const;
};

}  // namespace tavelo
