#include "settings/Settings.h"

#include <cerrno>
#include <cstdint>
#include <system_error>
#include <utility>

#include <unistd.h>

#include "language/Language.h"
#include "language/SystemErrors.h"
#include "language/Texts.h"
#include "platform/posix/ClosedFolder.h"
#include "platform/posix/PosixFileManager.h"

namespace tavelo::settings {
namespace {

namespace fs = std::filesystem;
namespace words = language::words;
using language::say;

/// Far more than anybody writes, and read in no time.
constexpr std::uintmax_t largestFile = 1'000'000;

std::string damage(const std::vector<std::size_t>& lines) {
  if (lines.empty()) return {};
  const std::string first = std::to_string(lines.front());
  const auto others = lines.size() - 1;
  if (others == 0) return say(words::damagedLine, {first});
  return say(words::damagedLines, {first, std::to_string(others)});
}

}  // namespace

Settings::Settings(std::optional<fs::path> configHome, Environment environment)
    : environment_(std::move(environment)) {
  if (configHome) file_ = *configHome / "Tavelo" / "tavelo.conf";
  reload();
}

Settings Settings::ofUser() { return Settings(posix::configDirectory()); }

Setting Settings::get(const char* name) const {
  if (auto value = environment_(name); !value.empty()) return {std::move(value), Origin::environment};
  const auto found = values_.find(name);
  return found == values_.end() ? Setting{} : Setting{found->second, Origin::file};
}

/// Without a file, both are empty.
Settings::Read Settings::read() const {
  if (!file_) return {};
  std::error_code error;
  const auto status = fs::status(*file_, error);
  if (status.type() == fs::file_type::not_found) return {};
  if (error) return {.text = {}, .error = language::systemError(error.value())};
  if (fs::is_directory(status)) return {.text = {}, .error = say(words::isAFolder)};
  if (fs::is_regular_file(status) && fs::file_size(*file_, error) > largestFile)
    return {.text = {}, .error = say(words::largerThanMegabyte)};
  errno = 0;
  auto text = posix::PosixFileManager().contents(*file_);
  if (!text) return {.text = {}, .error = errno == 0 ? say(words::unreadable) : language::systemError(errno)};
  return {.text = *std::move(text), .error = {}};
}

bool Settings::reload() {
  auto now = read();
  auto content = Content::read(now.text);
  error_ = now.error.empty() ? damage(content.damagedLines) : std::move(now.error);
  return std::exchange(values_, std::move(content.values)) != values_;
}

std::string Settings::write(const Values& changes) {
  if (!file_) return say(words::noHomeFolder);
  const auto now = read();
  if (!now.error.empty()) return say(words::fileAndReason, {file_->string(), now.error});
  const auto text = withChanges(now.text, changes);
  if (!text) return say(words::unwritableValue);
  if (*text == now.text) return {};
  errno = 0;
  const auto folder = file_->parent_path();
  if (posix::makeFolders(folder) && posix::PosixFileManager().writeAtomically(*file_, *text)) return {};
  if (errno == 0) return say(words::cannotBeWritten, {file_->string()});
  return say(words::fileAndReason, {file_->string(), language::systemError(errno)});
}

}  // namespace tavelo::settings
