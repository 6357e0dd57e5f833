#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace tavelo::platform {

/// The few file operations of the program. Main thread; each blocks until done. No exceptions.
class FileManager {
 public:
  virtual ~FileManager() = default;

  /// The user's application-support directory, whether or not it exists; absent when the platform names none.
  virtual std::optional<std::filesystem::path> applicationSupportDirectory() const = 0;

  /// A directory for what need not last; always named, though it may be unusable.
  virtual std::filesystem::path temporaryDirectory() const = 0;

  /// Makes `folder` with its missing parents, with default permissions. True when the folder exists
  /// afterwards.
  virtual bool createDirectory(const std::filesystem::path& folder) = 0;

  /// Whether anything exists at `path`; a link to nowhere does not.
  virtual bool fileExists(const std::filesystem::path& path) const = 0;

  /// The whole content of the file; absent when it cannot be read, a folder included.
  virtual std::optional<std::string> contents(const std::filesystem::path& file) const = 0;

  /// Replaces the file by `contents` in one step: whoever reads `file` at any instant, a kill or power cut
  /// included, sees the old content or the new one whole. False when it failed; the old file is then
  /// untouched and nothing half-written is left beside it. The file is readable by the user alone.
  virtual bool writeAtomically(const std::filesystem::path& file, std::string_view contents) = 0;
};

}  // namespace tavelo::platform
