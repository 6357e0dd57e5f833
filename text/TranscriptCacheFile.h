#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "text/TranscriptCacheEntry.h"
#include "text/TranscriptCacheFormat.h"

namespace tavelo {

namespace platform {
class FileManager;
}  // namespace platform

/// The path of the file that keeps the recent dictations: in the application-support directory, or in the
/// temporary directory if the platform has none. Does not access the disk. Main thread.
std::filesystem::path transcriptCacheFile(const platform::FileManager& fileManager);

/// The file that keeps the recent dictations, newest first. Main thread; file access blocks.
class TranscriptCacheFile final {
 public:
  /// More dictations than any file holds.
  static constexpr std::size_t everything = std::numeric_limits<std::size_t>::max();

  /// Does not access the disk. `fileManager` must outlive this object.
  explicit TranscriptCacheFile(platform::FileManager& fileManager);

  /// How many dictations a user's word stands for: a number from 1 on, or "all". Absent if it is neither.
  static std::optional<std::size_t> countNamed(std::string_view word);

  const std::filesystem::path& path() const { return fileURL_; }

  enum class State : std::uint8_t { missing, unreadable, damaged, read };
  struct Contents {
    State state = State::missing;
    /// Empty unless the file could be read.
    std::vector<TranscriptCacheEntry> entries;
  };
  Contents read() const;

  /// Replaces the file, and what a killed writer left beside it. False on failure; then the file is as
  /// before.
  bool write(std::span<const TranscriptCacheEntry> entries) const;

 private:
  platform::FileManager& fileManager_;
  const std::filesystem::path fileURL_;
};

}  // namespace tavelo
