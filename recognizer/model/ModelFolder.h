#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace tavelo::recognition {

/// Which engine a folder's speech model is for, and where its files are. Says nothing about their contents;
/// that is `ModelCheck`. A plain value.
struct ModelFolder {
  enum class Kind : std::uint8_t { none, sherpaOnnx, vosk };

  Kind kind = Kind::none;
  std::filesystem::path folder;

  /// The files of a sherpa-onnx model; empty for other kinds.
  std::filesystem::path encoder;
  std::filesystem::path decoder;
  std::filesystem::path joiner;
  std::filesystem::path tokens;

  /// Why the kind is `none`: a sentence in the current language without a full stop.
  std::string problem;

  /// Looks at the names in `folder`. Any thread; never throws.
  static ModelFolder read(const std::filesystem::path& folder);
};

}  // namespace tavelo::recognition
