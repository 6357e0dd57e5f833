#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "text/TranscriptCacheEntry.h"

namespace tavelo {

/// "2025-03-14T08:05:09Z": the instant in UTC, its fraction of a second cut off. Years 0000 to 9999.
std::string internetDateTime(TranscriptCacheEntry::Time time);

/// Reads yyyy-MM-ddTHH:mm:ss followed by Z or an offset ±hh:mm. Absent for anything else: a fraction, a date
/// that no calendar has, a leap second, an instant outside the years 0000 to 9999.
std::optional<TranscriptCacheEntry::Time> parseInternetDateTime(std::string_view text);

}  // namespace tavelo
