#include "platform/posix/PosixFileManager.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <exception>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/Environment.h"
#include "platform/posix/ClosedFolder.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/posix/ReplacementFile.h"

namespace tavelo::posix {
namespace {

namespace fs = std::filesystem;

/// The path in an environment variable; absent unless it is absolute.
std::optional<fs::path> absolutePath(const char* variable) {
  fs::path path = platform::environmentVariable(variable);
  return path.is_absolute() ? std::optional(std::move(path)) : std::nullopt;
}

/// Follows the links of the last component of `file`; absent if they form a circle.
std::optional<fs::path> linkTarget(fs::path file) {
  constexpr int longestChain = 40;
  for (int links = 0; links < longestChain; ++links) {
    std::error_code error;
    const fs::path target = fs::read_symlink(file, error);
    if (error) return file;
    file = file.parent_path() / target;
  }
  return std::nullopt;
}

std::optional<std::string> readAll(const FileDescriptor& file, std::size_t expected) {
  std::string contents;
  contents.reserve(expected);
  std::array<char, 64UL * 1024> piece{};
  while (true) {
    const ssize_t count = read(file.get(), piece.data(), piece.size());
    if (count == 0) return contents;
    if (count > 0) contents.append(piece.data(), static_cast<std::size_t>(count));
    if (count < 0 && errno != EINTR) return std::nullopt;
  }
}

}  // namespace

std::optional<fs::path> PosixFileManager::applicationSupportDirectory() const {
  if (auto dataHome = absolutePath("XDG_DATA_HOME")) return dataHome;
  if (const auto home = absolutePath("HOME")) return *home / ".local" / "share";
  return std::nullopt;
}

std::optional<fs::path> stateDirectory() {
  if (auto stateHome = absolutePath("XDG_STATE_HOME")) return stateHome;
  if (const auto home = absolutePath("HOME")) return *home / ".local" / "state";
  return std::nullopt;
}

std::optional<fs::path> configDirectory() {
  if (auto configHome = absolutePath("XDG_CONFIG_HOME")) return configHome;
  if (const auto home = absolutePath("HOME")) return *home / ".config";
  return std::nullopt;
}

fs::path PosixFileManager::temporaryDirectory() const { return absolutePath("TMPDIR").value_or("/tmp"); }

bool PosixFileManager::isShared(const fs::path& folder) const {
  if (applicationSupportDirectory()) return false;
  const fs::path below = folder.lexically_relative(temporaryDirectory());
  return !below.empty() && *below.begin() != "..";
}

FileDescriptor PosixFileManager::openFolder(const fs::path& folder) const {
  if (isShared(folder)) return openClosedFolder(temporaryDirectory(), folder, false);
  return FileDescriptor(open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

bool PosixFileManager::createDirectory(const fs::path& folder) {
  if (isShared(folder)) return bool(openClosedFolder(temporaryDirectory(), folder, true));
  return makeFolders(folder);
}

bool PosixFileManager::fileExists(const fs::path& path) const {
  std::error_code error;
  return fs::exists(path, error);
}

std::optional<std::string> PosixFileManager::contents(const fs::path& file) const {
  const FileDescriptor folder = openFolder(file.parent_path());
  const int links = isShared(file.parent_path()) ? O_NOFOLLOW : 0;
  const FileDescriptor descriptor(
      openat(folder.get(), file.filename().c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC | links));
  struct stat status {};
  if (!descriptor || fstat(descriptor.get(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  try {
    return readAll(descriptor, static_cast<std::size_t>(status.st_size));
  } catch (const std::exception&) {
    return std::nullopt;  // The file does not fit into memory.
  }
}

bool PosixFileManager::writeAtomically(const fs::path& file, std::string_view contents) {
  const auto target = isShared(file.parent_path()) ? std::optional(file) : linkTarget(file);
  if (!target) return false;
  auto replacement = ReplacementFile::create(openFolder(target->parent_path()), target->filename());
  return replacement && replacement->write(contents) && replacement->putInPlace();
}

}  // namespace tavelo::posix
