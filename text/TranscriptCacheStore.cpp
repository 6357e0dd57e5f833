#include "text/TranscriptCacheStore.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>

#include "platform/Clock.h"
#include "platform/FileManager.h"
#include "platform/Platform.h"
#include "platform/Workspace.h"
#include "text/TranscriptCacheFile.h"

namespace tavelo {

TranscriptCacheStore::TranscriptCacheStore()
    : TranscriptCacheStore(platform::current().fileManager, platform::current().workspace,
                           platform::current().clock) {}

TranscriptCacheStore::TranscriptCacheStore(platform::FileManager& fileManager, platform::Workspace& workspace,
                                           platform::Clock& clock)
    : fileManager_(fileManager),
      workspace_(workspace),
      clock_(clock),
      fileURL_(transcriptCacheFile(fileManager)) {
  if (!fileManager_.createDirectory(fileURL_.parent_path())) return;
  if (!load()) entries_.clear();
}

bool TranscriptCacheStore::load() {
  if (!fileManager_.fileExists(fileURL_)) return true;
  const std::optional<std::string> json = fileManager_.contents(fileURL_);
  if (!json) return false;
  auto decoded = decoder_.decode(*json);
  if (!decoded) return false;
  entries_ = std::move(*decoded);
  return true;
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
  save();
}

void TranscriptCacheStore::save() const {
  // A failure is not reported: the entries stay here and are written with the next addition.
  fileManager_.writeAtomically(fileURL_, encoder_.encode(entries_));
}

std::vector<TranscriptCacheEntry> TranscriptCacheStore::recentEntries(std::size_t limit) const {
  const auto count = static_cast<std::ptrdiff_t>(std::min(limit, entries_.size()));
  return {entries_.begin(), entries_.begin() + count};
}

}  // namespace tavelo
