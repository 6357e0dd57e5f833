#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tavelo::linuxdesktop {

/// What an application's .desktop file says about it.
struct DesktopEntry {
  /// The file's path below its folder of applications, with dashes for slashes and without ".desktop".
  std::string identifier;
  /// In the user's language if the file has it; UTF-8 if the file keeps to the rules.
  std::string name;
  /// The class of its windows; empty if the file does not say.
  std::string windowClass;
  /// The program's name without its folder; empty if the file does not say.
  std::string program;
  /// Not for menus: a helper, or a second way to start the application.
  bool isHidden = false;
};

/// The names of a locale such as "vi_VN.UTF-8" that keys in .desktop files may bear, most specific first.
std::vector<std::string> localeNames(const std::string& locale);

/// Absent if the file cannot be read or is not an application's. Leaves `identifier` empty.
std::optional<DesktopEntry> readDesktopEntry(const std::filesystem::path& file,
                                             const std::vector<std::string>& localeNames);

}  // namespace tavelo::linuxdesktop
