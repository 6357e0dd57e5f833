#include "platform/recognizer/VoskConfiguration.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <system_error>

namespace tavelo::recognizer {
namespace {

constexpr std::string_view vietnamese = "vi_VN";
constexpr const char* libraryName = "libvosk.so";

/// Whether the identifier may be the name of a folder: letters, digits, '_', '-' and '@' only, so that it can
/// lead nowhere else.
bool isPlainName(std::string_view identifier) {
  constexpr std::string_view allowed = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-@";
  return !identifier.empty() && identifier.find_first_not_of(allowed) == std::string_view::npos;
}

std::optional<std::string> nonEmpty(std::optional<std::string> value) {
  return value && !value->empty() ? std::move(value) : std::nullopt;
}

}  // namespace

std::optional<std::string> VoskConfiguration::processEnvironment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? std::optional<std::string>{value} : std::nullopt;
}

VoskConfiguration::VoskConfiguration(std::optional<std::filesystem::path> dataHome,
                                     const Environment& environment)
    : library_(nonEmpty(environment("TAVELO_VOSK_LIBRARY"))),
      model_(nonEmpty(environment("TAVELO_VOSK_MODEL"))) {
  if (dataHome) ownFolder_ = *dataHome / "Tavelo";
}

std::string VoskConfiguration::library() const {
  if (library_) return *library_;
  std::error_code ignored;
  if (ownFolder_ && std::filesystem::exists(*ownFolder_ / "lib" / libraryName, ignored))
    return *ownFolder_ / "lib" / libraryName;
  return libraryName;
}

std::optional<std::filesystem::path> VoskConfiguration::modelFolder(
    const std::string& localeIdentifier) const {
  std::filesystem::path folder;
  if (model_) {
    if (localeIdentifier != vietnamese) return std::nullopt;
    folder = *model_;
  } else {
    if (!ownFolder_ || !isPlainName(localeIdentifier)) return std::nullopt;
    folder = *ownFolder_ / "models" / localeIdentifier;
  }
  std::error_code ignored;
  return std::filesystem::is_directory(folder, ignored) ? std::optional{folder} : std::nullopt;
}

}  // namespace tavelo::recognizer
