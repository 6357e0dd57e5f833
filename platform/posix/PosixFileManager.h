#pragma once

#include "platform/FileManager.h"

namespace tavelo::posix {

/// The user's files. The application-support directory is the XDG data home: $XDG_DATA_HOME when absolute,
/// else .local/share in $HOME, else absent. The temporary directory is $TMPDIR, else /tmp.
///
/// `contents` reads only regular files, so it never waits. `writeAtomically` follows symbolic links, so a
/// user can keep the file elsewhere; for a broken link it makes the target if its folder exists. It fails
/// while another process writes the same file.
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
