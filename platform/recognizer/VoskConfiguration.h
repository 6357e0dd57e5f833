#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace tavelo::recognizer {

/// Where libvosk and its models are found.
///
/// `TAVELO_VOSK_LIBRARY` and `TAVELO_VOSK_MODEL` name them outright; otherwise they are looked for under the
/// data home. The environment is read once, the folders at each question, so that a model that is installed
/// while the program runs is found. Any thread.
class VoskConfiguration final {
 public:
  /// The value of an environment variable; absent when it is not set.
  using Environment = std::function<std::optional<std::string>(const char* name)>;

  /// The environment of this process.
  static std::optional<std::string> processEnvironment(const char* name);

  /// `dataHome` is the user's data folder, above our own; absent when there is none.
  explicit VoskConfiguration(std::optional<std::filesystem::path> dataHome,
                             const Environment& environment = processEnvironment);

  /// What to hand to the loader: a path, or the bare name for the loader's own path.
  std::string library() const;

  /// The folder of the model for a locale such as "vi_VN"; absent when there is none. A model that
  /// `TAVELO_VOSK_MODEL` names speaks Vietnamese: any other locale then has none.
  std::optional<std::filesystem::path> modelFolder(const std::string& localeIdentifier) const;

 private:
  std::optional<std::filesystem::path> ownFolder_;
  std::optional<std::string> library_;
  std::optional<std::string> model_;
};

}  // namespace tavelo::recognizer
