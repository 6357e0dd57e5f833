#include "platform/recognizer/ModelConfiguration.h"

#include <string_view>
#include <system_error>

#include "language/Language.h"
#include "language/Texts.h"

namespace tavelo::recognizer {
namespace {

constexpr std::string_view vietnamese = "vi_VN";
constexpr const char* sherpaName = "libsherpa-onnx-c-api.so";
constexpr const char* voskName = "libvosk.so";

/// Whether sherpa-onnx reads the model; libvosk's have no such file.
bool hasOnnxFile(const std::filesystem::path& folder) {
  std::error_code error;
  for (std::filesystem::directory_iterator each{folder, error}, end; !error && each != end;
       each.increment(error))
    if (each->path().extension() == ".onnx") return true;
  return false;
}

/// Whether the identifier is safe as a folder name: letters, digits, '_', '-' and '@' only, so that it cannot
/// lead to another folder.
bool isPlainName(std::string_view identifier) {
  constexpr std::string_view allowed = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-@";
  return !identifier.empty() && identifier.find_first_not_of(allowed) == std::string_view::npos;
}

}  // namespace

ModelConfiguration::ModelConfiguration(std::optional<std::filesystem::path> dataHome,
                                       const Environment& environment)
    : sherpaLibrary_(environment("TAVELO_SHERPA_LIBRARY")),
      voskLibrary_(environment("TAVELO_VOSK_LIBRARY")),
      model_(environment("TAVELO_MODEL")) {
  if (model_.empty()) {
    modelVariable_ = "TAVELO_VOSK_MODEL";
    model_ = environment(modelVariable_);
  }
  if (dataHome) ownFolder_ = *dataHome / "Tavelo";
}

std::string ModelConfiguration::libraryFor(const std::filesystem::path& folder) const {
  const bool sherpa = hasOnnxFile(folder);
  const auto& named = sherpa ? sherpaLibrary_ : voskLibrary_;
  if (!named.empty() || !ownFolder_) return named;
  const auto own = *ownFolder_ / "lib" / (sherpa ? sherpaName : voskName);
  std::error_code ignored;
  return std::filesystem::exists(own, ignored) ? own.string() : std::string{};
}

std::optional<std::filesystem::path> ModelConfiguration::modelFolder(
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

std::string ModelConfiguration::modelPlace(const std::string& localeIdentifier) const {
  if (!model_.empty()) return std::string{modelVariable_} + "=" + model_;
  return ownFolder_ ? (*ownFolder_ / "models" / localeIdentifier).string()
                    : language::say(language::words::userDataFolder);
}

}  // namespace tavelo::recognizer
