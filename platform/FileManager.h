#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace tavelo::platform {

/// The file operations of the program. Main thread; each blocks until it is done. None throws.
class FileManager {
 public:
  virtual ~FileManager() = default;

  /// Where applications keep the user's data. The directory may not exist yet; absent if the system names
  /// none.
  virtual std::optional<std::filesystem::path> applicationSupportDirectory() const = 0;

  /// A directory for temporary files. Always named, but it may be unusable.
  virtual std::filesystem::path temporaryDirectory() const = 0;

  /// Makes `folder` and its missing parents; only the user may enter those that it makes. True if the folder
  /// exists afterwards and may be used.
  virtual bool createDirectory(const std::filesystem::path& folder) = 0;

  /// Whether anything exists at `path`. A broken symbolic link does not count.
  virtual bool fileExists(const std::filesystem::path& path) const = 0;

  /// The whole contents of the file; absent if it cannot be read or is a folder.
  virtual std::optional<std::string> contents(const std::filesystem::path& file) const = 0;

  /// Replaces the file in one step: a reader sees either the whole old contents or the whole new contents,
  /// even after a crash or power cut. Only the user can read the file. On failure returns false, keeps the
  /// old file and leaves nothing half-written behind.
  virtual bool writeAtomically(const std::filesystem::path& file, std::string_view contents) = 0;
};

}  // namespace tavelo::platform
