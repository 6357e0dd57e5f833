#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "platform/linux/session/ActiveWindow.h"
#include "platform/linux/session/DesktopEntry.h"

namespace tavelo::linuxdesktop {

/// The applications that are installed, by their .desktop files. Reads them when first asked, some
/// milliseconds, and again when one of the folders has changed. Main thread.
class DesktopEntries final {
 public:
  /// Of these folders, the first with an entry of a name counting; names in the language of `locale`.
  DesktopEntries(std::vector<std::filesystem::path> folders, const std::string& locale);

  /// Of the folders and in the language that the environment names.
  static DesktopEntries ofEnvironment();

  /// The application that a window belongs to: by the class that its entry names, else by the entry's own
  /// name or the last part of it, else by its program. `program` may be empty. Null when there is none; valid
  /// until the next call.
  const DesktopEntry* find(const WindowClass& window, const std::string& program);

 private:
  using Times = std::map<std::filesystem::path, std::filesystem::file_time_type>;

  bool haveFoldersChanged() const;
  void read();
  void readFolder(const std::filesystem::path& folder);

  const std::vector<std::filesystem::path> folders_;
  const std::vector<std::string> localeNames_;
  /// Every folder that was looked at, also those that do not exist, and when it had last changed.
  Times times_;
  std::map<std::string, DesktopEntry> entries_;
};

}  // namespace tavelo::linuxdesktop
