#include "settings/Settings.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <system_error>
#include <utility>

#include <unistd.h>

#include "platform/posix/ClosedFolder.h"
#include "platform/posix/PosixFileManager.h"

namespace tavelo::settings {
namespace {

namespace fs = std::filesystem;

/// Far more than anybody writes, and read in no time.
constexpr std::uintmax_t largestFile = 1'000'000;
constexpr const char* unreadable = "cannot be read";

std::string damage(const std::vector<std::size_t>& lines) {
  if (lines.empty()) return {};
  const std::string first = std::to_string(lines.front());
  const auto others = lines.size() - 1;
  if (others == 0) return "line " + first + " is not NAME=value, and is skipped";
  return "line " + first + " and " + std::to_string(others) + " more are not NAME=value, and are skipped";
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
  if (error) return {.text = {}, .error = error.message()};
  if (fs::is_directory(status)) return {.text = {}, .error = "is a folder"};
  if (fs::is_regular_file(status) && fs::file_size(*file_, error) > largestFile)
    return {.text = {}, .error = "is larger than a megabyte"};
  errno = 0;
  auto text = posix::PosixFileManager().contents(*file_);
  if (!text) return {.text = {}, .error = errno == 0 ? unreadable : std::strerror(errno)};
  return {.text = *std::move(text), .error = {}};
}

bool Settings::reload() {
  auto now = read();
  auto content = Content::read(now.text);
  error_ = now.error.empty() ? damage(content.damagedLines) : std::move(now.error);
  return std::exchange(values_, std::move(content.values)) != values_;
}

std::string Settings::write(const Values& changes) {
  if (!file_) return "there is no home folder";
  const auto now = read();
  if (!now.error.empty()) return file_->string() + " " + now.error;
  const auto text = withChanges(now.text, changes);
  if (!text) return "a value has characters that a line of the settings file cannot hold";
  if (*text == now.text) return {};
  errno = 0;
  const auto folder = file_->parent_path();
  if (posix::makeFolders(folder) && posix::PosixFileManager().writeAtomically(*file_, *text)) return {};
  const std::string why = errno == 0 ? "it cannot be written" : std::strerror(errno);
  return file_->string() + ": " + why;
}

}  // namespace tavelo::settings
