#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "text/TranscriptCacheEntry.h"

namespace tavelo {

/// `time` in UTC without the fraction of a second, such as "2025-03-14T08:05:09Z". Years 0000 to 9999.
std::string internetDateTime(TranscriptCacheEntry::Time time);

/// Reads yyyy-MM-ddTHH:mm:ss followed by Z or an offset ±hh:mm. Absent for anything else, such as a fraction,
/// a date that does not exist, a leap second, or a time outside the years 0000 to 9999.
std::optional<TranscriptCacheEntry::Time> parseInternetDateTime(std::string_view text);

}  // namespace tavelo
