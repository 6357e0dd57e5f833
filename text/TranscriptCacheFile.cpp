#include "text/TranscriptCacheFile.h"

#include <charconv>
#include <system_error>
#include <utility>

#include "platform/FileManager.h"

namespace tavelo {

std::filesystem::path transcriptCacheFile(const platform::FileManager& fileManager) {
  const auto support = fileManager.applicationSupportDirectory();
  return (support ? *support : fileManager.temporaryDirectory()) / "Tavelo" / "transcript-cache.json";
}

TranscriptCacheFile::TranscriptCacheFile(platform::FileManager& fileManager)
    : fileManager_(fileManager), fileURL_(transcriptCacheFile(fileManager)) {}

std::optional<std::size_t> TranscriptCacheFile::countNamed(std::string_view word) {
  if (word == "all") return everything;
  std::size_t count = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), count);
  if (end != word.data() + word.size() || error == std::errc::invalid_argument) return std::nullopt;
  if (error != std::errc()) return everything;
  return count > 0 ? std::optional(count) : std::nullopt;
}

TranscriptCacheFile::Contents TranscriptCacheFile::read() const {
  if (!fileManager_.fileExists(fileURL_)) return {State::missing, {}};
  const auto json = fileManager_.contents(fileURL_);
  if (!json) return {State::unreadable, {}};
  auto entries = TranscriptCacheDecoder().decode(*json);
  if (!entries) return {State::damaged, {}};
  return {State::read, *std::move(entries)};
}

bool TranscriptCacheFile::write(std::span<const TranscriptCacheEntry> entries) const {
  return fileManager_.writeAtomically(fileURL_, TranscriptCacheEncoder().encode(entries));
}

}  // namespace tavelo
