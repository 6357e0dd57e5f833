#include "platform/linux/session/ProgramFileWatch.h"

#include <QString>

#include <sys/stat.h>

namespace tavelo::linuxdesktop {

using platform::ProgramFile;

ProgramFileWatch::ProgramFileWatch(std::filesystem::path file)
    : file_(std::move(file)), running_(identify(file_)) {
  if (!running_) return;
  watcher_.addPath(QString::fromStdString(file_.parent_path().string()));
  QObject::connect(&watcher_, &QFileSystemWatcher::directoryChanged, &watcher_, [this] {
    if (onChange) onChange();
  });
}

ProgramFile ProgramFileWatch::state() const {
  const auto now = identify(file_);
  if (!now) return ProgramFile::removed;
  return now == running_ ? ProgramFile::unchanged : ProgramFile::replaced;
}

std::optional<ProgramFileWatch::Identity> ProgramFileWatch::identify(const std::filesystem::path& file) {
  struct stat status {};
  if (stat(file.c_str(), &status) != 0) return std::nullopt;
  return Identity{status.st_dev, status.st_ino};
}

}  // namespace tavelo::linuxdesktop
