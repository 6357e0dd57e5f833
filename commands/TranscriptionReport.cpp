#include "commands/TranscriptionReport.h"

#include <array>
#include <cmath>
#include <cstdio>

#include <nlohmann/json.hpp>

#include "commands/InputOutput.h"

namespace tavelo {
namespace {

using Json = nlohmann::ordered_json;
using recordings::WordErrors;

std::string decimal(double value, int digits) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%.*f", digits, value);
  return text.data();
}

std::string describe(platform::Seconds sound, platform::Seconds took) {
  return decimal(sound.count(), 1) + " s of sound in " + decimal(took.count(), 2) + " s";
}

std::string describe(const WordErrors& errors) {
  return std::to_string(errors.wrong()) + " of " + std::to_string(errors.words) + " wrong (" +
         decimal(errors.rate() * 100, 1) + " %): " + std::to_string(errors.substitutions) + " replaced, " +
         std::to_string(errors.deletions) + " missing, " + std::to_string(errors.insertions) + " added";
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
  std::string lines = onOneLine(file.file) + "\n  raw    " + onOneLine(file.raw) + "\n  text   " +
                      onOneLine(file.text) + "\n  time   " + describe(file.sound, file.took) + "\n";
  if (file.errors) lines += "  words  " + describe(*file.errors) + "\n";
  return lines;
}

std::string describeAll(const std::vector<TranscribedFile>& files) {
  const auto sum = total(files);
  std::string lines = std::to_string(sum.transcribed) + " of " + std::to_string(files.size()) +
                      " recordings transcribed\n  time   " + describe(sum.sound, sum.took) + "\n";
  if (sum.errors) lines += "  words  " + describe(*sum.errors) + "\n";
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
