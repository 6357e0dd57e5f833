#include "commands/TranscriptionReport.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include <nlohmann/json.hpp>

#include "commands/InputOutput.h"
#include "language/Language.h"
#include "language/Texts.h"

namespace tavelo {
namespace {

using language::say;
namespace words = language::words;

using Json = nlohmann::ordered_json;
using recordings::WordErrors;

std::string decimal(double value, int digits) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%.*f", digits, value);
  std::string written = text.data();
  if (language::current() == language::Language::vietnamese) std::ranges::replace(written, '.', ',');
  return written;
}

std::string describe(platform::Seconds sound, platform::Seconds took) {
  return say(words::timeTaken, {decimal(sound.count(), 1), decimal(took.count(), 2)});
}

std::string describe(const WordErrors& errors) {
  return say(words::wrongWords, {std::to_string(errors.wrong()), std::to_string(errors.words),
                                 decimal(errors.rate() * 100, 1), std::to_string(errors.substitutions),
                                 std::to_string(errors.deletions), std::to_string(errors.insertions)});
}

struct Total {
  std::size_t transcribed = 0;
  platform::Seconds sound{0};
  platform::Seconds took{0};
  std::optional<WordErrors> errors;
};

Total total(const std::vector<TranscribedFile>& files) {
  Total sum;
  for (const auto& each : files) {
    if (!each.failure.empty()) continue;
    ++sum.transcribed;
    sum.sound += each.sound;
    sum.took += each.took;
    if (!each.errors) continue;
    if (!sum.errors) sum.errors.emplace();
    *sum.errors += *each.errors;
  }
  return sum;
}

double toMilliseconds(platform::Seconds seconds) { return std::round(seconds.count() * 1000) / 1000; }

Json toJson(const WordErrors& errors) {
  return {{"said", errors.words},
          {"replaced", errors.substitutions},
          {"missing", errors.deletions},
          {"added", errors.insertions},
          {"errorRate", errors.rate()}};
}

Json toJson(const TranscribedFile& file) {
  if (!file.failure.empty()) return {{"file", file.file}, {"error", file.failure}};
  Json json{{"file", file.file},
            {"seconds", toMilliseconds(file.sound)},
            {"recognitionSeconds", toMilliseconds(file.took)},
            {"raw", file.raw},
            {"text", file.text}};
  if (file.errors) json["words"] = toJson(*file.errors);
  return json;
}

}  // namespace

std::string describe(const TranscribedFile& file) {
  std::string lines = say(words::heard, {onOneLine(file.file), onOneLine(file.raw), onOneLine(file.text)}) +
                      describe(file.sound, file.took);
  if (file.errors) lines += describe(*file.errors);
  return lines;
}

std::string describeAll(const std::vector<TranscribedFile>& files) {
  const auto sum = total(files);
  std::string lines =
      say(words::transcribedOf, {std::to_string(sum.transcribed), std::to_string(files.size())}) +
      describe(sum.sound, sum.took);
  if (sum.errors) lines += describe(*sum.errors);
  return lines;
}

std::string toJson(const std::vector<TranscribedFile>& files) {
  const auto sum = total(files);
  Json each = Json::array();
  for (const auto& file : files) each.push_back(toJson(file));
  Json all{{"files", files.size()},
           {"transcribed", sum.transcribed},
           {"seconds", toMilliseconds(sum.sound)},
           {"recognitionSeconds", toMilliseconds(sum.took)}};
  if (sum.errors) all["words"] = toJson(*sum.errors);
  // A name of a file may be ill-formed.
  return Json{{"recordings", std::move(each)}, {"all", std::move(all)}}.dump(2, ' ', /*ensure_ascii=*/false,
                                                                             Json::error_handler_t::replace);
}

}  // namespace tavelo
