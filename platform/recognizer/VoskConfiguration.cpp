#include "platform/recognizer/VoskConfiguration.h"

#include <string_view>
#include <system_error>

namespace tavelo::recognizer {
namespace {

constexpr std::string_view vietnamese = "vi_VN";
constexpr const char* libraryName = "libvosk.so";

/// Whether the identifier is safe as a folder name: letters, digits, '_', '-' and '@' only, so that it cannot
/// lead to another folder.
bool isPlainName(std::string_view identifier) {
  constexpr std::string_view allowed = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-@";
  return !identifier.empty() && identifier.find_first_not_of(allowed) == std::string_view::npos;
}

}  // namespace

VoskConfiguration::VoskConfiguration(std::optional<std::filesystem::path> dataHome,
                                     const Environment& environment)
    : library_(environment("TAVELO_VOSK_LIBRARY")), model_(environment("TAVELO_VOSK_MODEL")) {
  if (dataHome) ownFolder_ = *dataHome / "Tavelo";
}

std::string VoskConfiguration::library() const {
  if (!library_.empty()) return library_;
  std::error_code ignored;
  if (ownFolder_ && std::filesystem::exists(*ownFolder_ / "lib" / libraryName, ignored))
    return *ownFolder_ / "lib" / libraryName;
  return libraryName;
}

std::optional<std::filesystem::path> VoskConfiguration::modelFolder(
    const std::string& localeIdentifier) const {
  std::filesystem::path folder;
  if (!model_.empty()) {
    if (localeIdentifier != vietnamese) return std::nullopt;
    folder = model_;
  } else {
    if (!ownFolder_ || !isPlainName(localeIdentifier)) return std::nullopt;
    folder = *ownFolder_ / "models" / localeIdentifier;
  }
  std::error_code ignored;
  return std::filesystem::is_directory(folder, ignored) ? std::optional{folder} : std::nullopt;
}

}  // namespace tavelo::recognizer
