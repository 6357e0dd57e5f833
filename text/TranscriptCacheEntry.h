#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "platform/Uuid.h"

namespace tavelo {

/// One stored dictation. A plain value. Texts are UTF-8, possibly ill-formed unless read from the file.
struct TranscriptCacheEntry {
  /// Wall-clock time. Microseconds cover every four-digit year; nanoseconds would not.
  using Time = std::chrono::sys_time<std::chrono::microseconds>;

  /// Random.
  platform::Uuid id;
  Time createdAt;
  /// Locale of the recogniser.
  std::string localeIdentifier;
  /// The frontmost application when the entry was made; each absent if unknown.
  std::optional<std::string> sourceAppName;
  std::optional<std::string> sourceBundleIdentifier;
  /// The recogniser's final transcript, unchanged.
  std::string rawTranscript;
  /// The finished text.
  std::string normalizedText;

  bool operator==(const TranscriptCacheEntry&) const = default;
};

}  // namespace tavelo
