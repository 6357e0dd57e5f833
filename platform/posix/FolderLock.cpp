#include "platform/posix/FolderLock.h"

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "language/Language.h"
#include "language/SystemErrors.h"
#include "language/Texts.h"

namespace tavelo::posix {
namespace {

/// Whether only the user may write to the folder. Anyone else who may could replace the lock.
bool isOwn(const std::filesystem::path& folder) {
  struct stat status {};
  return stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == geteuid() &&
         (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

}  // namespace

bool FolderLock::take() {
  errorText_.clear();
  if (!isOwn(folder_)) {
    errorText_ = language::say(language::words::notYourFolder, {folder_.string()});
    return false;
  }
  FileDescriptor file(open(file_.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
  if (file && flock(file.get(), LOCK_EX | LOCK_NB) == 0) {
    descriptor_ = std::move(file);
    return true;
  }
  if (!file || errno != EWOULDBLOCK) errorText_ = file_.string() + ": " + language::systemError(errno);
  return false;
}

}  // namespace tavelo::posix
