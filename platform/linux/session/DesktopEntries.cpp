#include "platform/linux/session/DesktopEntries.h"

#include <QFile>
#include <QStandardPaths>
#include <algorithm>
#include <functional>
#include <string_view>
#include <utility>

#include "platform/Environment.h"

namespace tavelo::linuxdesktop {
namespace {

namespace fs = std::filesystem;

/// The earliest time if `folder` does not exist.
fs::file_time_type changeTime(const fs::path& folder) {
  std::error_code error;
  const auto time = fs::last_write_time(folder, error);
  return error ? fs::file_time_type::min() : time;
}

std::string lower(std::string text) {
  std::ranges::transform(text, text.begin(), [](char each) {
    return each >= 'A' && each <= 'Z' ? static_cast<char>(each - 'A' + 'a') : each;
  });
  return text;
}

/// A file's identifier is its path below the folder of applications, with dashes for slashes.
std::string identifierOf(const fs::path& file, const fs::path& folder) {
  std::string name = file.lexically_relative(folder).replace_extension().string();
  std::ranges::replace(name, '/', '-');
  return name;
}

}  // namespace

DesktopEntries::DesktopEntries(std::vector<fs::path> folders, const std::string& locale)
    : folders_(std::move(folders)), localeNames_(linuxdesktop::localeNames(locale)) {}

DesktopEntries DesktopEntries::ofEnvironment() {
  std::vector<fs::path> folders;
  for (const auto& folder : QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation)) {
    // Qt keeps a relative XDG_DATA_HOME, which is to be ignored.
    if (folder.startsWith(QLatin1Char('/'))) folders.emplace_back(QFile::encodeName(folder).toStdString());
  }
  // Not from QLocale, which ignores LC_MESSAGES and drops modifiers.
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    if (const auto locale = platform::environmentVariable(name); !locale.empty())
      return {std::move(folders), locale};
  }
  return {std::move(folders), ""};
}

bool DesktopEntries::haveFoldersChanged() const {
  return times_.empty() ||
         std::ranges::any_of(times_, [](const auto& each) { return changeTime(each.first) != each.second; });
}

void DesktopEntries::read() {
  times_.clear();
  entries_.clear();
  for (const auto& folder : folders_) readFolder(folder);
}

void DesktopEntries::readFolder(const fs::path& folder) {
  // Take the time first, so that a change while we read makes us read again.
  times_[folder] = changeTime(folder);
  std::error_code error;
  fs::recursive_directory_iterator each(folder, fs::directory_options::skip_permission_denied, error);
  for (; !error && each != fs::recursive_directory_iterator(); each.increment(error)) {
    std::error_code ignored;
    if (each->is_directory(ignored)) times_[each->path()] = changeTime(each->path());
    if (each->path().extension() != ".desktop") continue;
    const auto identifier = identifierOf(each->path(), folder);
    if (entries_.contains(identifier)) continue;
    auto entry = readDesktopEntry(each->path(), localeNames_);
    if (!entry) continue;
    entry->identifier = identifier;
    entries_.emplace(identifier, std::move(*entry));
  }
}

const DesktopEntry* DesktopEntries::find(const WindowClass& window, const std::string& program) {
  if (haveFoldersChanged()) read();
  const auto name = lower(window.name);
  const auto instance = lower(window.instance);
  const auto isClass = [&](const std::string& text) {
    return !text.empty() && (lower(text) == name || lower(text) == instance);
  };
  const std::function<bool(const DesktopEntry&)> criteria[] = {
      [&](const auto& each) { return !name.empty() && each.windowClass == window.name; },
      [&](const auto& each) { return isClass(each.windowClass); },
      [&](const auto& each) { return isClass(each.identifier); },
      [&](const auto& each) { return isClass(each.identifier.substr(each.identifier.rfind('.') + 1)); },
      [&](const auto& each) { return !program.empty() && each.program == program; },
      [&](const auto& each) { return isClass(each.program); },
  };
  for (const auto& fits : criteria) {
    const DesktopEntry* found = nullptr;
    for (const auto& [identifier, entry] : entries_) {
      if (fits(entry) && (found == nullptr || (found->isHidden && !entry.isHidden))) found = &entry;
    }
    if (found != nullptr) return found;
  }
  return nullptr;
}

}  // namespace tavelo::linuxdesktop
