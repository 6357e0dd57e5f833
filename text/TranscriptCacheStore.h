#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "text/TranscriptCacheEntry.h"
#include "text/TranscriptCacheFile.h"

namespace tavelo {

namespace platform {
class Clock;
class FileManager;
class Workspace;
}  // namespace platform

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

  /// Forgets the newest entries, or `TranscriptCacheFile::everything`, and saves. Returns how many there
  /// were; absent if the file still has them, because it cannot be written.
  std::optional<std::size_t> forget(std::size_t newest);

 private:
  bool save() const;

  platform::Workspace& workspace_;
  platform::Clock& clock_;
  const TranscriptCacheFile file_;
  /// Newest first.
  std::vector<TranscriptCacheEntry> entries_;
};

}  // namespace tavelo
