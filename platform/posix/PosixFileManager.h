#pragma once

#include "platform/FileManager.h"

namespace tavelo::posix {

/// The user's files. The application-support directory is the XDG data home: $XDG_DATA_HOME when absolute,
/// else .local/share in $HOME, else absent. The temporary directory is $TMPDIR, else /tmp.
///
/// `contents` reads regular files only, so that nothing can make it wait. `writeAtomically` follows symbolic
/// links, so that a user who keeps the file elsewhere keeps the link; a link to nowhere makes its target,
/// when the folder for it exists. It does not wait for another process that is writing the same file: that
/// fails.
class PosixFileManager final : public platform::FileManager {
 public:
  std::optional<std::filesystem::path> applicationSupportDirectory() const override;
  std::filesystem::path temporaryDirectory() const override;
  bool createDirectory(const std::filesystem::path& folder) override;
  bool fileExists(const std::filesystem::path& path) const override;
  std::optional<std::string> contents(const std::filesystem::path& file) const override;
  bool writeAtomically(const std::filesystem::path& file, std::string_view contents) override;
};

}  // namespace tavelo::posix
