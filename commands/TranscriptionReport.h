#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/Time.h"
#include "recordings/WordErrors.h"

namespace tavelo {

/// What `transcribe` has to say of one recording. A plain value.
struct TranscribedFile {
  std::string file;
  platform::Seconds sound{0};
  platform::Seconds took{0};
  std::string raw;
  /// The finished text.
  std::string text;
  /// Absent if nobody told what was said.
  std::optional<recordings::WordErrors> errors;
  /// Why there is no text, as one clause; empty if there is one.
  std::string failure;
};

/// A few lines for people about a recording that was transcribed.
std::string describe(const TranscribedFile& file);

/// The sums over all recordings that were transcribed, for people.
std::string describeAll(const std::vector<TranscribedFile>& files);

/// One JSON document about all recordings, without a line feed at the end.
std::string toJson(const std::vector<TranscribedFile>& files);

}  // namespace tavelo
