#include "platform/linux/session/Autostart.h"

#include <cerrno>
#include <sstream>
#include <system_error>
#include <utility>

#include "language/Language.h"
#include "language/SystemErrors.h"
#include "language/Texts.h"
#include "platform/Environment.h"
#include "platform/linux/session/EntryText.h"
#include "platform/posix/ClosedFolder.h"
#include "platform/posix/ExecutableFolder.h"
#include "platform/posix/PosixFileManager.h"

namespace tavelo::linuxdesktop {
namespace {

namespace fs = std::filesystem;
namespace words = language::words;
using language::say;

constexpr const char* name = "autostart/tavelo.desktop";
constexpr const char* hiddenKey = "Hidden";
/// GNOME's own switch.
constexpr const char* enabledKey = "X-GNOME-Autostart-enabled";

std::optional<std::string> contents(const fs::path& file) {
  errno = 0;
  return posix::PosixFileManager().contents(file);
}

/// Why the last call failed, if the system said; else `otherwise`, which names the file itself.
std::string lastError(const fs::path& file, const language::Text& otherwise) {
  if (errno == 0) return say(otherwise, {file.string()});
  return say(words::fileAndReason, {file.string(), language::systemError(errno)});
}

std::string valueOf(const std::string& entry, const char* key) {
  const auto keys = entryKeys(entry);
  const auto found = keys.find(key);
  return found == keys.end() ? std::string{} : found->second;
}

/// Whether a session would look at it at all.
bool isEntry(const std::string& text) {
  return valueOf(text, "Type") == "Application" && !valueOf(text, "Exec").empty();
}

}  // namespace

Autostart::Autostart(const std::optional<fs::path>& configHome, const std::vector<fs::path>& systemFolders,
                     fs::path program)
    : program_(std::move(program)) {
  if (configHome) file_ = *configHome / name;
  for (const auto& each : systemFolders) systemFiles_.push_back(each / name);
}

Autostart Autostart::ofUser() {
  std::vector<fs::path> folders;
  std::istringstream named(platform::environmentVariable("XDG_CONFIG_DIRS"));
  for (std::string each; std::getline(named, each, ':');)
    if (fs::path(each).is_absolute()) folders.emplace_back(each);
  if (folders.empty()) folders.emplace_back("/etc/xdg");
  return {posix::configDirectory(), folders, posix::executableFile()};
}

std::optional<std::string> Autostart::systemEntry() const {
  for (const auto& each : systemFiles_)
    if (auto entry = contents(each)) return entry;
  return std::nullopt;
}

Autostart::Status Autostart::status() const {
  auto entry = file_ ? contents(*file_) : std::nullopt;
  if (!entry) entry = systemEntry();
  return entry ? statusOf(*entry) : Status{};
}

Autostart::Status Autostart::statusOf(const std::string& entry) const {
  if (!isEntry(entry) || valueOf(entry, hiddenKey) == "true" || valueOf(entry, enabledKey) == "false")
    return {};
  auto program = programIn(valueOf(entry, "Exec"));
  const auto ownName = program_.filename();
  std::error_code ignored;
  // The entry for all users names no folder.
  if (program == ownName || program == program_ || fs::equivalent(program, program_, ignored))
    return {State::on, std::move(program)};
  const auto state = fs::path(program).filename() == ownName ? State::elsewhere : State::foreign;
  return {state, std::move(program)};
}

std::string Autostart::set(bool on) {
  if (!file_) return say(words::noHomeFolder);
  std::error_code error;
  const auto entry = contents(*file_);
  if (!entry && fs::exists(*file_, error)) return lastError(*file_, words::cannotBeRead);
  const auto now = status().state;
  if (!on) return now == State::off || now == State::foreign ? std::string{} : switchOff(entry);
  if (program_.empty()) return say(words::ownFileUnknown);
  if (now == State::on) return {};
  if (!entry || !isEntry(*entry)) return writeAnew(newEntry());
  auto changed = withEntryKey(withEntryKey(*entry, hiddenKey, std::nullopt), enabledKey, std::nullopt);
  const auto afterwards = statusOf(changed);
  if (afterwards.state == State::foreign)
    return say(words::entryOfAnother, {file_->string(), afterwards.program});
  if (afterwards.state == State::elsewhere)
    changed = withEntryKey(changed, "Exec", execLine(program_.string()));
  return write(changed);
}

/// `entry` is the user's; absent if the one for all users is to be overridden.
std::string Autostart::switchOff(const std::optional<std::string>& entry) const {
  if (!entry) return writeAnew(withEntryKey(newEntry(), hiddenKey, "true"));
  if (*entry != newEntry() || systemEntry()) return write(withEntryKey(*entry, hiddenKey, "true"));
  std::error_code error;
  fs::remove(*file_, error);
  if (!error) return {};
  return say(words::fileAndReason, {file_->string(), language::systemError(error.value())});
}

std::string Autostart::newEntry() const {
  return "[Desktop Entry]\nType=Application\nName=Tavelo\nExec=" + execLine(program_.string()) +
         "\nIcon=tavelo\n";
}

/// A link to something else than an entry goes; what it leads to is not ours to write.
std::string Autostart::writeAnew(const std::string& entry) const {
  std::error_code error;
  if (fs::is_symlink(*file_, error)) fs::remove(*file_, error);
  return write(entry);
}

std::string Autostart::write(const std::string& entry) const {
  errno = 0;
  if (posix::makeFolders(file_->parent_path()) && posix::PosixFileManager().writeAtomically(*file_, entry))
    return {};
  return lastError(*file_, words::cannotBeWritten);
}

}  // namespace tavelo::linuxdesktop
