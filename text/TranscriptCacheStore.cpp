#include "text/TranscriptCacheStore.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <utility>

#include "platform/Clock.h"
#include "platform/FileManager.h"
#include "platform/Platform.h"
#include "platform/Workspace.h"

namespace tavelo {

TranscriptCacheStore::TranscriptCacheStore()
    : TranscriptCacheStore(platform::current().fileManager, platform::current().workspace,
                           platform::current().clock) {}

TranscriptCacheStore::TranscriptCacheStore(platform::FileManager& fileManager, platform::Workspace& workspace,
                                           platform::Clock& clock)
    : workspace_(workspace), clock_(clock), file_(fileManager) {
  if (fileManager.createDirectory(file_.path().parent_path())) entries_ = file_.read().entries;
}

void TranscriptCacheStore::add(std::string raw, std::string normalizedText, std::string localeIdentifier) {
  TranscriptCacheEntry entry;
  entry.id = platform::Uuid::random();
  entry.createdAt = std::chrono::floor<std::chrono::microseconds>(clock_.now());
  entry.localeIdentifier = std::move(localeIdentifier);
  if (const auto application = workspace_.frontmostApplication()) {
    entry.sourceAppName = application->localizedName();
    entry.sourceBundleIdentifier = application->bundleIdentifier();
  }
  entry.rawTranscript = std::move(raw);
  entry.normalizedText = std::move(normalizedText);
  entries_.insert(entries_.begin(), std::move(entry));
  if (entries_.size() > maxEntries) entries_.erase(entries_.begin() + maxEntries, entries_.end());
  // Ignore a failure: the entries stay in memory and are written with the next addition.
  save();
}

bool TranscriptCacheStore::save() const { return file_.write(entries_); }

std::vector<TranscriptCacheEntry> TranscriptCacheStore::recentEntries(std::size_t limit) const {
  const auto count = static_cast<std::ptrdiff_t>(std::min(limit, entries_.size()));
  return {entries_.begin(), entries_.begin() + count};
}

std::optional<std::size_t> TranscriptCacheStore::forget(std::size_t newest) {
  const auto count = std::min(newest, entries_.size());
  entries_.erase(entries_.begin(), entries_.begin() + static_cast<std::ptrdiff_t>(count));
  // A file that could not be read has texts too.
  const bool isInFile = count > 0 || (newest == TranscriptCacheFile::everything &&
                                      file_.read().state != TranscriptCacheFile::State::missing);
  return !isInFile || save() ? std::optional(count) : std::nullopt;
}

}  // namespace tavelo
