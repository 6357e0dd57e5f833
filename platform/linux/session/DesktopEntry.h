#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tavelo::linuxdesktop {

/// What an application's .desktop file says about it.
struct DesktopEntry {
  /// The file's name below its folder of applications, without ".desktop".
  std::string identifier;
  /// In the user's language where the file has it; UTF-8 as far as the file keeps to it.
  std::string name;
  /// The class of its windows; empty when the file does not say.
  std::string windowClass;
  /// The program's name without its folder; empty when the file does not say.
  std::string program;
  /// Not meant for menus: a helper, or a second way to start the application.
  bool isHidden = false;
};

/// Names of a locale such as "vi_VN.UTF-8", the most telling first, as keys in .desktop files carry them.
std::vector<std::string> localeNames(const std::string& locale);

/// Absent when the file cannot be read or is not an application's. `identifier` is left empty.
std::optional<DesktopEntry> readDesktopEntry(const std::filesystem::path& file,
                                             const std::vector<std::string>& localeNames);

}  // namespace tavelo::linuxdesktop
