#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "text/TranscriptCacheEntry.h"
#include "text/TranscriptCacheFormat.h"

namespace tavelo {

namespace platform {
class Clock;
class FileManager;
class Workspace;
}  // namespace platform

/// The path of the file that keeps the recent dictations: in the application-support directory, or in the
/// temporary directory if the platform has none. Does not access the disk. Main thread.
std::filesystem::path transcriptCacheFile(const platform::FileManager& fileManager);

/// Keeps the most recent dictations in memory and in a file. The file is read once, at construction, and
/// rewritten after every addition. An unreadable file counts as empty. If writing fails, the entries stay in
/// memory and are written with the next addition; no error is reported. Main thread only; file access blocks.
class TranscriptCacheStore final {
 public:
  /// How many entries are kept. A longer file is cut at the next addition.
  static constexpr std::size_t maxEntries = 200;

  /// Uses the current platform.
  TranscriptCacheStore();

  /// Uses these, which must outlive the store.
  TranscriptCacheStore(platform::FileManager& fileManager, platform::Workspace& workspace,
                       platform::Clock& clock);

  TranscriptCacheStore(const TranscriptCacheStore&) = delete;
  TranscriptCacheStore& operator=(const TranscriptCacheStore&) = delete;

  /// Adds a dictation with the current time and the frontmost application, and saves.
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
