#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "platform/Uuid.h"

namespace tavelo {

/// One stored dictation. A plain value; texts are UTF-8, those of a running program possibly ill-formed.
struct TranscriptCacheEntry {
  /// Wall-clock time; in this unit every date of the calendar fits.
  using Time = std::chrono::sys_time<std::chrono::microseconds>;

  /// Random; the identity of the entry.
  platform::Uuid id;
  Time createdAt;
  /// Locale of the recogniser.
  std::string localeIdentifier;
  /// The application in front when the entry was made; each absent when unknown.
  std::optional<std::string> sourceAppName;
  std::optional<std::string> sourceBundleIdentifier;
  /// The recogniser's final transcript, unchanged.
  std::string rawTranscript;
  /// The finished text.
  std::string normalizedText;

  bool operator==(const TranscriptCacheEntry&) const = default;
};

}  // namespace tavelo
