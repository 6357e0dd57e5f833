#include <algorithm>
#include <chrono>
#include <ctime>
#include <span>
#include <string>
#include <vector>

#include "commands/CommandWiring.h"
#include "commands/Commands.h"
#include "commands/InputOutput.h"
#include "platform/FileManager.h"
#include "text/TranscriptCacheFormat.h"
#include "text/TranscriptCacheStore.h"

namespace tavelo {
namespace {

std::vector<TranscriptCacheEntry> readHistory() {
  const auto files = makeCommandFileManager();
  const auto file = transcriptCacheFile(*files);
  if (!files->fileExists(file)) return {};
  const auto json = files->contents(file);
  if (!json) throw CommandFailure(file.string() + ": cannot be read");
  auto entries = TranscriptCacheDecoder().decode(*json);
  if (!entries) throw CommandFailure(file.string() + ": is not a history of dictations");
  return std::move(*entries);
}

/// In the user's time zone, to the minute; "?" if the system cannot convert it.
std::string localTime(TranscriptCacheEntry::Time time) {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(
      std::chrono::time_point_cast<std::chrono::system_clock::duration>(time));
  std::tm local{};
  std::string text(32, '\0');
  if (localtime_r(&seconds, &local) == nullptr) return "?";
  text.resize(std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", &local));
  return text;
}

std::string lineFor(const TranscriptCacheEntry& entry) {
  return localTime(entry.createdAt) + "  " + onOneLine(entry.sourceAppName.value_or("-")) + "  " +
         onOneLine(entry.normalizedText) + "\n";
}

}  // namespace

ExitCode runHistory(const HistoryOptions& options) {
  const auto entries = readHistory();
  const std::span newest(entries.data(), std::min(options.limit, entries.size()));
  if (options.json) {
    print(TranscriptCacheEncoder().encode(newest) + "\n");
  } else {
    for (const auto& entry : newest) print(lineFor(entry));
  }
  return ExitCode::done;
}

}  // namespace tavelo
