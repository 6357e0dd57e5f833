#include "recognizer/model/ModelFolder.h"

#include <array>
#include <map>
#include <string_view>
#include <system_error>

#include "language/Language.h"
#include "language/SystemErrors.h"
#include "language/Texts.h"

namespace tavelo::recognition {
namespace {

using language::say;
namespace words = language::words;

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 3> partNames{"encoder", "decoder", "joiner"};
constexpr std::string_view extension = ".onnx";
constexpr std::string_view smallNumbers = ".int8";

/// The files of one part of a model: with 8-bit numbers, and with full ones.
struct Part {
  fs::path small;
  fs::path full;

  bool exists() const { return !small.empty() || !full.empty(); }

  /// The 8-bit file is much faster. A decoder is a table, where full numbers cost nothing.
  const fs::path& preferred(bool isDecoder) const {
    if (small.empty() || (isDecoder && !full.empty())) return full;
    return small;
  }
};

using Parts = std::array<Part, partNames.size()>;

/// Files that belong together, by what stands behind the part's name: nothing, or "-epoch-12-avg-8".
using Variants = std::map<std::string, Parts, std::less<>>;

void sortIn(Variants& variants, const fs::path& file) {
  const std::string name = file.filename().string();
  for (std::size_t i = 0; i < partNames.size(); ++i) {
    std::string_view rest = name;
    if (!rest.starts_with(partNames[i]) || !rest.ends_with(extension)) continue;
    rest.remove_prefix(partNames[i].size());
    rest.remove_suffix(extension.size());
    const bool small = rest.ends_with(smallNumbers);
    if (small) rest.remove_suffix(smallNumbers.size());
    if (!rest.empty() && rest.front() != '-' && rest.front() != '.') continue;
    Part& part = variants[std::string{rest}][i];
    (small ? part.small : part.full) = file;
  }
}

/// Says which part is missing, of a folder that has some parts of a sherpa-onnx model.
std::string missingPart(const std::string& folder, const Variants& variants, bool hasTokens) {
  for (std::size_t i = 0; i < partNames.size(); ++i) {
    bool found = false;
    for (const auto& [suffix, parts] : variants) found = found || parts[i].exists();
    if (!found) return say(words::lacks, {folder, std::string{partNames[i]} + std::string{extension}});
  }
  return hasTokens ? say(words::mixedParts, {folder}) : say(words::lacks, {folder, "tokens.txt"});
}

ModelFolder sherpaOnnx(ModelFolder model, const Variants& variants) {
  const fs::path tokens = model.folder / "tokens.txt";
  std::error_code ignored;
  const bool hasTokens = fs::exists(tokens, ignored);
  // Plain names sort first. Of several trainings' files, the last counts.
  const Parts* chosen = nullptr;
  for (const auto& [suffix, parts] : variants) {
    if (!parts[0].exists() || !parts[1].exists() || !parts[2].exists()) continue;
    chosen = &parts;
    if (suffix.empty()) break;
  }
  if (chosen == nullptr || !hasTokens) {
    model.problem = missingPart(model.folder.string(), variants, hasTokens);
    return model;
  }
  model.kind = ModelFolder::Kind::sherpaOnnx;
  model.encoder = (*chosen)[0].preferred(false);
  model.decoder = (*chosen)[1].preferred(true);
  model.joiner = (*chosen)[2].preferred(false);
  model.tokens = tokens;
  return model;
}

bool looksLikeVosk(const fs::path& folder) {
  std::error_code ignored;
  return fs::is_directory(folder / "am", ignored) || fs::exists(folder / "final.mdl", ignored);
}

}  // namespace

ModelFolder ModelFolder::read(const fs::path& folder) {
  ModelFolder model;
  model.folder = folder;
  std::error_code error;
  if (!fs::is_directory(folder, error)) {
    model.problem = say(words::isNotAFolder, {folder.string()});
    return model;
  }
  Variants variants;
  fs::directory_iterator files{folder, error};
  while (!error && files != fs::directory_iterator{}) {
    sortIn(variants, files->path());
    files.increment(error);
  }
  if (error) {
    model.problem =
        say(words::fileUnreadableBecause, {folder.string(), language::systemError(error.value())});
  } else if (!variants.empty()) {
    return sherpaOnnx(std::move(model), variants);
  } else if (looksLikeVosk(folder)) {
    model.kind = Kind::vosk;
  } else {
    model.problem = say(words::noModelThere, {folder.string()});
  }
  return model;
}

}  // namespace tavelo::recognition
