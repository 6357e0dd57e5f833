#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "platform/linux/session/ActiveWindow.h"
#include "platform/linux/session/DesktopEntry.h"

namespace tavelo::linuxdesktop {

/// The installed applications, according to their .desktop files. Reads them on first use, which takes some
/// milliseconds, and again when one of the folders has changed. Main thread.
class DesktopEntries final {
 public:
  /// The first folder that has an entry of a name wins. Display names are in the language of `locale`.
  DesktopEntries(std::vector<std::filesystem::path> folders, const std::string& locale);

  /// With the folders and the language that the environment names.
  static DesktopEntries ofEnvironment();

  /// The application that a window belongs to. Compares the window's class with the class that the entry
  /// names, then with the entry's identifier or its last part; then compares the program, which may be empty.
  /// Null if there is none. Valid until the next call.
  const DesktopEntry* find(const WindowClass& window, const std::string& program);

 private:
  using Times = std::map<std::filesystem::path, std::filesystem::file_time_type>;

  bool haveFoldersChanged() const;
  void read();
  void readFolder(const std::filesystem::path& folder);

  const std::vector<std::filesystem::path> folders_;
  const std::vector<std::string> localeNames_;
  /// When each folder that we read had last changed. Includes folders that do not exist.
  Times times_;
  std::map<std::string, DesktopEntry> entries_;
};

}  // namespace tavelo::linuxdesktop
