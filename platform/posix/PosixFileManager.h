#pragma once

#include "platform/FileManager.h"
#include "platform/posix/FileDescriptor.h"

namespace tavelo::posix {

/// Where programs keep their logs: $XDG_STATE_HOME when absolute, else .local/state in $HOME, else absent.
std::optional<std::filesystem::path> stateDirectory();

/// Where programs keep their settings: $XDG_CONFIG_HOME when absolute, else .config in $HOME, else absent.
std::optional<std::filesystem::path> configDirectory();

/// The user's files. The application-support directory is the XDG data home: $XDG_DATA_HOME when absolute,
/// else .local/share in $HOME, else absent. The temporary directory is $TMPDIR, else /tmp.
///
/// `contents` reads only regular files, so it never waits. `writeAtomically` follows symbolic links, so a
/// user can keep the file elsewhere; for a broken link it makes the target if its folder exists. It fails
/// while another process writes the same file.
///
/// If there is no application-support directory, the program's files go to the temporary directory, where
/// other users may have planted something. Below it, only real folders that are the user's own and closed to
/// everyone else are used, and no link is followed.
class PosixFileManager : public platform::FileManager {
 public:
  std::optional<std::filesystem::path> applicationSupportDirectory() const override;
  std::filesystem::path temporaryDirectory() const override;
  bool createDirectory(const std::filesystem::path& folder) override;
  bool fileExists(const std::filesystem::path& path) const override;
  std::optional<std::string> contents(const std::filesystem::path& file) const override;
  bool writeAtomically(const std::filesystem::path& file, std::string_view contents) override;

 private:
  /// Whether `folder` lies where other users may write too.
  bool isShared(const std::filesystem::path& folder) const;
  /// No descriptor if it cannot be opened or must not be used.
  FileDescriptor openFolder(const std::filesystem::path& folder) const;
};

}  // namespace tavelo::posix
