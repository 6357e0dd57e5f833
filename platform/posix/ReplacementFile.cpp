#include "platform/posix/ReplacementFile.h"

#include <cerrno>
#include <cstddef>
#include <string>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tavelo::posix {
namespace {

/// How often another writer may interfere before we give up.
constexpr int attempts = 16;

std::filesystem::path replacementPath(const std::filesystem::path& target) {
  std::string name = ".";
  name.append(target.filename().string()).append(".new");
  return target.parent_path() / name;
}

/// Locks `file` without waiting and checks that it is still the file at `path`. Only the holder of the lock
/// may move or remove that file.
bool own(const FileDescriptor& file, const std::filesystem::path& path) {
  struct stat opened {};
  struct stat named {};
  errno = 0;
  return flock(file.get(), LOCK_EX | LOCK_NB) == 0 && fstat(file.get(), &opened) == 0 &&
         lstat(path.c_str(), &named) == 0 && opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

/// Removes what a killed writer left at `path`. False if a running writer is using it.
bool removeLeftover(const std::filesystem::path& path) {
  const FileDescriptor leftover(open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (!leftover) return errno == ENOENT || unlink(path.c_str()) == 0;
  if (own(leftover, path)) return unlink(path.c_str()) == 0;
  return errno != EWOULDBLOCK;
}

bool syncFolder(const std::filesystem::path& folder) {
  const FileDescriptor descriptor(
      open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return descriptor && fsync(descriptor.get()) == 0;
}

}  // namespace

std::optional<ReplacementFile> ReplacementFile::create(const std::filesystem::path& target) {
  const std::filesystem::path path = replacementPath(target);
  for (int attempt = 0; attempt < attempts; ++attempt) {
    FileDescriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (file) {
      // Before we locked the file, another writer may have taken it for a leftover and removed it: try again.
      if (own(file, path)) return ReplacementFile(target, path, std::move(file));
    } else if (errno != EEXIST || !removeLeftover(path)) {
      return std::nullopt;
    }
  }
  return std::nullopt;
}

ReplacementFile::ReplacementFile(std::filesystem::path target, std::filesystem::path path,
                                 FileDescriptor file)
    : target_(std::move(target)), path_(std::move(path)), file_(std::move(file)) {}

ReplacementFile::ReplacementFile(ReplacementFile&& other) noexcept
    : target_(std::move(other.target_)),
      path_(std::exchange(other.path_, {})),
      file_(std::move(other.file_)) {}

// The descriptor, and with it the lock, is closed after the file is removed.
ReplacementFile::~ReplacementFile() {
  if (!path_.empty()) unlink(path_.c_str());
}

bool ReplacementFile::write(std::string_view contents) {
  while (!contents.empty()) {
    const ssize_t written = ::write(file_.get(), contents.data(), contents.size());
    if (written < 0 && errno != EINTR) return false;
    if (written > 0) contents.remove_prefix(static_cast<std::size_t>(written));
  }
  return fsync(file_.get()) == 0;
}

bool ReplacementFile::putInPlace() {
  if (rename(path_.c_str(), target_.c_str()) != 0) return false;
  path_.clear();
  // The new contents are in place. If this flush fails, a power cut may bring back the old ones, which are
  // complete too.
  syncFolder(target_.parent_path());
  return true;
}

}  // namespace tavelo::posix
