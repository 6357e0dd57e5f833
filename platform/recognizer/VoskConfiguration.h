#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "platform/Environment.h"

namespace tavelo::recognizer {

/// Where libvosk and its models are.
///
/// `TAVELO_VOSK_LIBRARY` and `TAVELO_VOSK_MODEL` name them; otherwise we look under the data home. The
/// environment is read once. The folders are read at each call, so that a model installed while the program
/// runs is found. Any thread.
class VoskConfiguration final {
 public:
  /// The value of an environment variable; empty when it is not set.
  using Environment = std::function<std::string(const char* name)>;

  /// `dataHome` is the user's data folder, which holds ours; absent when there is none.
  explicit VoskConfiguration(std::optional<std::filesystem::path> dataHome,
                             const Environment& environment = platform::environmentVariable);

  /// What to give to the loader: a path, or a bare name for the loader to look up.
  std::string library() const;

  /// The model folder for a locale such as "vi_VN"; absent when there is none. The model that
  /// `TAVELO_VOSK_MODEL` names is for Vietnamese only.
  std::optional<std::filesystem::path> modelFolder(const std::string& localeIdentifier) const;

 private:
  std::optional<std::filesystem::path> ownFolder_;
  /// What the environment names; empty when it names nothing.
  std::string library_;
  std::string model_;
};

}  // namespace tavelo::recognizer
