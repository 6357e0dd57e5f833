#include "text/TranscriptCacheStore.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>

#include "platform/Clock.h"
#include "platform/FileManager.h"
#include "platform/Platform.h"
#include "platform/Workspace.h"

namespace tavelo {

std::filesystem::path transcriptCacheFile(const platform::FileManager& fileManager) {
  const auto support = fileManager.applicationSupportDirectory();
  return (support ? *support : fileManager.temporaryDirectory()) / "Tavelo" / "transcript-cache.json";
}

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
  // Ignore a failure: the entries stay in memory and are written with the next addition.
  fileManager_.writeAtomically(fileURL_, encoder_.encode(entries_));
}

std::vector<TranscriptCacheEntry> TranscriptCacheStore::recentEntries(std::size_t limit) const {
  const auto count = static_cast<std::ptrdiff_t>(std::min(limit, entries_.size()));
  return {entries_.begin(), entries_.begin() + count};
}

}  // namespace tavelo
