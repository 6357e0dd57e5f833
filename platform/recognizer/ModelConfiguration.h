#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "platform/Environment.h"

namespace tavelo::recognizer {

/// Where the speech models and their libraries are.
///
/// `TAVELO_MODEL`, or else `TAVELO_VOSK_MODEL`, names a model; `TAVELO_SHERPA_LIBRARY` and
/// `TAVELO_VOSK_LIBRARY` name the libraries. Otherwise we look under the data home. These settings are read
/// once. The folders are read at each call, so that a model installed while the program runs is found. Any
/// thread.
class ModelConfiguration final {
 public:
  /// The value of a setting or environment variable; empty when it is not set.
  using Environment = std::function<std::string(const char* name)>;

  /// `dataHome` is the user's data folder, which holds ours; absent when there is none.
  explicit ModelConfiguration(std::optional<std::filesystem::path> dataHome,
                              const Environment& environment = platform::environmentVariable);

  /// The library for the model in `folder`; empty if the loader has to find it.
  std::string libraryFor(const std::filesystem::path& folder) const;

  /// The model folder for a locale such as "vi_VN"; absent when there is none. The model that the environment
  /// names is for Vietnamese only.
  std::optional<std::filesystem::path> modelFolder(const std::string& localeIdentifier) const;

  /// Where the model for the locale should be, for people; a variable that names it comes with its name.
  std::string modelPlace(const std::string& localeIdentifier) const;

 private:
  std::optional<std::filesystem::path> ownFolder_;
  /// What the environment names; empty when it names nothing.
  std::string sherpaLibrary_;
  std::string voskLibrary_;
  const char* modelVariable_ = "TAVELO_MODEL";
  std::string model_;
};

}  // namespace tavelo::recognizer
