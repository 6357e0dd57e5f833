#pragma once

#include <QFileSystemWatcher>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <utility>

#include "platform/ProgramFile.h"

namespace tavelo::linuxdesktop {

/// Watches the file that this program was started from. A package manager renames the new file over the old
/// one, so its folder is watched. Costs nothing while the folder stays as it is. Main thread, with an
/// application object.
class ProgramFileWatch final {
 public:
  /// `file` as it is now is the one that runs. If it is not there, nothing is watched.
  explicit ProgramFileWatch(std::filesystem::path file);

  /// Called when anything in the file's folder has changed, often several times in a row.
  std::function<void()> onChange;

  /// Looks at the file.
  platform::ProgramFile state() const;

 private:
  /// Device and number. No other file can have both while we run from this one.
  using Identity = std::pair<std::uint64_t, std::uint64_t>;
  static std::optional<Identity> identify(const std::filesystem::path& file);

  std::filesystem::path file_;
  std::optional<Identity> running_;
  QFileSystemWatcher watcher_;
};

}  // namespace tavelo::linuxdesktop
