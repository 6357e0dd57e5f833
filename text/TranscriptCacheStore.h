#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "text/TranscriptCacheDecoder.h"
#include "text/TranscriptCacheEncoder.h"
#include "text/TranscriptCacheEntry.h"

namespace tavelo {

namespace platform {
class Clock;
class FileManager;
class Workspace;
}  // namespace platform

/// Keeps the most recent dictations in memory and in a file, which is read once, at construction, and
/// rewritten whole after every addition. What cannot be read counts as empty, and what cannot be written
/// stays in memory for the next time; nobody is told. Main thread; file work blocks.
class TranscriptCacheStore final {
 public:
  /// Entries that are kept; a longer file is cut at the next addition.
  static constexpr std::size_t maxEntries = 200;

  /// Works on the current platform.
  TranscriptCacheStore();

  /// Works on these; they must outlive the store.
  TranscriptCacheStore(platform::FileManager& fileManager, platform::Workspace& workspace,
                       platform::Clock& clock);

  TranscriptCacheStore(const TranscriptCacheStore&) = delete;
  TranscriptCacheStore& operator=(const TranscriptCacheStore&) = delete;

  /// Adds a dictation made now in the application that is in front now, and saves.
  void add(std::string raw, std::string normalizedText, std::string localeIdentifier = "vi_VN");

  /// The newest entries, newest first.
  std::vector<TranscriptCacheEntry> recentEntries(std::size_t limit = 20) const;

 private:
  bool load();
  void save() const;

  platform::FileManager& fileManager_;
  platform::Workspace& workspace_;
  platform::Clock& clock_;
  const std::filesystem::path fileURL_;
  TranscriptCacheEncoder encoder_;
  TranscriptCacheDecoder decoder_;
  /// Newest first.
  std::vector<TranscriptCacheEntry> entries_;
};

}  // namespace tavelo
