#pragma once

#include <QSocketNotifier>
#include <QTimer>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "platform/posix/FileDescriptor.h"

namespace tavelo::linuxdesktop {

/// Tells when a file may have changed: it was written, replaced, removed or made, or its folder was. Watches
/// the targets of links too. Sleeps meanwhile; if the system has no watches left, it looks every ten seconds.
/// Main thread, with an application object.
class FileWatcher final {
 public:
  /// `changed` is called on the main thread, some tenths of a second after the change, once for several. It
  /// may be called when nothing has changed. `file` must be absolute.
  FileWatcher(std::filesystem::path file, std::function<void()> changed);

 private:
  void watch();
  bool watchEntry(const std::filesystem::path& entry);
  void readEvents();

  const std::filesystem::path file_;
  posix::FileDescriptor events_;
  /// The names that matter in each watched folder.
  std::multimap<int, std::string> names_;
  std::unique_ptr<QSocketNotifier> notifier_;
  /// Runs from a change until we tell of it.
  QTimer pause_;
};

}  // namespace tavelo::linuxdesktop
