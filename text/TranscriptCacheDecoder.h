#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "text/TranscriptCacheEntry.h"

namespace tavelo {

/// Reads the cache file's JSON. Any thread.
class TranscriptCacheDecoder final {
 public:
  /// The entries in the order of the file; absent when `json` is not, as a whole, an array of entries in
  /// strict JSON. A byte-order mark is tolerated, and members of other names are skipped whatever they hold.
  /// Needs a small multiple of the length in memory, however deep the nesting.
  std::optional<std::vector<TranscriptCacheEntry>> decode(std::string_view json) const;
};

}  // namespace tavelo
