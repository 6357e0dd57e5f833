#include "platform/posix/ReplacementFile.h"

#include <cerrno>
#include <cstddef>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tavelo::posix {
namespace {

/// How often another writer may interfere before we give up.
constexpr int attempts = 16;

/// Locks `file` without waiting and checks that it is still the file called `name`. Only the holder of the
/// lock may move or remove that file.
bool own(const FileDescriptor& file, const FileDescriptor& folder, const std::string& name) {
  struct stat opened {};
  struct stat named {};
  errno = 0;
  return flock(file.get(), LOCK_EX | LOCK_NB) == 0 && fstat(file.get(), &opened) == 0 &&
         fstatat(folder.get(), name.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0 &&
         opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

/// Removes what a killed writer left under `name`. False if a running writer is using it.
bool removeLeftover(const FileDescriptor& folder, const std::string& name) {
  const FileDescriptor leftover(
      openat(folder.get(), name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (!leftover) return errno == ENOENT || unlinkat(folder.get(), name.c_str(), 0) == 0;
  if (own(leftover, folder, name)) return unlinkat(folder.get(), name.c_str(), 0) == 0;
  return errno != EWOULDBLOCK;
}

}  // namespace

std::optional<ReplacementFile> ReplacementFile::create(FileDescriptor folder, const std::string& target) {
  const std::string name = "." + target + ".new";
  for (int attempt = 0; attempt < attempts; ++attempt) {
    FileDescriptor file(
        openat(folder.get(), name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (file) {
      // Before we locked the file, another writer may have taken it for a leftover and removed it: try again.
      if (own(file, folder, name)) return ReplacementFile(std::move(folder), target, name, std::move(file));
    } else if (errno != EEXIST || !removeLeftover(folder, name)) {
      return std::nullopt;
    }
  }
  return std::nullopt;
}

ReplacementFile::ReplacementFile(FileDescriptor folder, std::string target, std::string name,
                                 FileDescriptor file)
    : folder_(std::move(folder)),
      target_(std::move(target)),
      name_(std::move(name)),
      file_(std::move(file)) {}

ReplacementFile::ReplacementFile(ReplacementFile&& other) noexcept
    : folder_(std::move(other.folder_)),
      target_(std::move(other.target_)),
      name_(std::exchange(other.name_, {})),
      file_(std::move(other.file_)) {}

// The descriptor, and with it the lock, is closed after the file is removed.
ReplacementFile::~ReplacementFile() {
  if (!name_.empty()) unlinkat(folder_.get(), name_.c_str(), 0);
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
  if (renameat(folder_.get(), name_.c_str(), folder_.get(), target_.c_str()) != 0) return false;
  name_.clear();
  // The new contents are in place. If this flush fails, a power cut may bring back the old ones, which are
  // complete too.
  fsync(folder_.get());
  return true;
}

}  // namespace tavelo::posix
