#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "models/KnownModels.h"

/// What installed files are, told by looking at them. Blocking; any thread.
namespace tavelo::models {

/// The engine that the model in `folder` is for; absent if it lacks a file that its engine opens.
std::optional<Engine> engineOfModel(const std::filesystem::path& folder);

/// The folder of a model: `folder` itself or one directly below it. Absent if there is none, or one for
/// another engine.
std::optional<std::filesystem::path> findModelFolder(const std::filesystem::path& folder, Engine engine);

/// What is wrong with the files of a sherpa-onnx model, which its library would not survive: a clause. Empty
/// if nothing is, and for other models.
std::string flawOfModel(const std::filesystem::path& folder);

/// Whether `folder` holds all files of the library, each for this machine and with the functions that we
/// call.
bool isLibrary(const std::filesystem::path& folder, Engine engine);

/// The folder below `folder` that holds the library's files; absent if there is none.
std::optional<std::filesystem::path> findLibraryFolder(const std::filesystem::path& folder, Engine engine);

/// What we note in a model folder that we installed. A folder without a note is the user's own.
struct Origin {
  /// The publisher's name of the model.
  std::string name;
  /// Of its archive.
  std::string sha256;
  /// One word: "given", "published" or "unchecked", for what the archive was compared with. Notes of earlier
  /// versions lack it.
  std::string compared;
  /// Whether the note is a file.
  bool isReadable = true;
};

constexpr const char* originFileName = ".origin";

/// Absent if there is no note. The texts are empty if it cannot be read.
std::optional<Origin> originOf(const std::filesystem::path& modelFolder);

}  // namespace tavelo::models
