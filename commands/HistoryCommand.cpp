#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstddef>
#include <ctime>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "app/SingleInstance.h"
#include "commands/CommandWiring.h"
#include "commands/Commands.h"
#include "commands/InputOutput.h"
#include "language/Language.h"
#include "language/Texts.h"
#include "platform/FileManager.h"
#include "text/TranscriptCacheFile.h"

namespace tavelo {
namespace {

using language::say;
namespace words = language::words;
using State = TranscriptCacheFile::State;

std::string cannotRead(const TranscriptCacheFile& file) {
  return say(words::cannotBeRead, {file.path().string()});
}

std::vector<TranscriptCacheEntry> readHistory() {
  const auto files = makeCommandFileManager();
  const TranscriptCacheFile file(*files);
  auto contents = file.read();
  if (contents.state == State::unreadable) throw CommandFailure(cannotRead(file));
  if (contents.state == State::damaged) throw CommandFailure(say(words::notAHistory, {file.path().string()}));
  return std::move(contents.entries);
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

/// Forgets in the file itself, while no program runs. Returns how many there were; absent if it cannot be
/// written.
std::optional<std::size_t> forgetInFile(const TranscriptCacheFile& file, std::size_t newest) {
  auto [state, entries] = file.read();
  std::error_code ignored;
  // A writer that was killed may have left a text beside a file that has none.
  const bool mayHaveLeftover = newest == TranscriptCacheFile::everything &&
                               std::filesystem::exists(file.path().parent_path(), ignored);
  if (state == State::missing && !mayHaveLeftover) return 0;
  if (state == State::unreadable) throw CommandFailure(cannotRead(file));
  const bool isDamaged = state == State::damaged;
  if (isDamaged && newest != TranscriptCacheFile::everything)
    throw CommandFailure(say(words::onlyAllOfDamaged, {file.path().string()}));
  const auto count = std::min(newest, entries.size());
  if (count == 0 && !isDamaged && !mayHaveLeftover) return 0;
  return file.write(std::span(entries).subspan(count)) ? std::optional(count) : std::nullopt;
}

/// Has the running program forget, which would write its own copy of the history back.
std::optional<std::size_t> askToForget(const SingleInstance& instance, const std::string& which) {
  const auto reply = instance.send(InstanceMessage::forgetHistory, true, which);
  if (reply.answer != InstanceAnswer::taken) throw CommandFailure(say(words::cannotForget));
  std::size_t count = 0;
  const auto& number = reply.words;
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), count);
  return error == std::errc() ? std::optional(count) : std::nullopt;
}

ExitCode forget(const std::string& which) {
  const auto files = makeCommandFileManager();
  const TranscriptCacheFile file(*files);
  const std::size_t newest = TranscriptCacheFile::countNamed(which).value_or(1);
  // While we hold the claim, no program starts and reads the file. Without a folder to claim, none runs.
  SingleInstance instance(instanceFolder());
  const bool isAlone = instance.claim() || !instance.errorText().empty();
  const auto count = isAlone ? forgetInFile(file, newest) : askToForget(instance, which);
  if (!count) throw CommandFailure(say(words::stillInFile, {file.path().string()}));
  if (newest == TranscriptCacheFile::everything) {
    print(say(words::forgotAll));
  } else if (*count < 2) {
    print(say(*count == 0 ? words::forgotNothing : words::forgotOne));
  } else {
    print(say(words::forgotNewest, {std::to_string(*count)}));
  }
  return ExitCode::done;
}

}  // namespace

ExitCode runHistory(const HistoryOptions& options) {
  if (!options.forget.empty()) return forget(options.forget);
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
