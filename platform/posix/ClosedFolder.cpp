#include "platform/posix/ClosedFolder.h"

#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tavelo::posix {
namespace {

namespace fs = std::filesystem;

constexpr mode_t usersAlone = S_IRWXU;
constexpr mode_t allPermissions = S_IRWXU | S_IRWXG | S_IRWXO;

/// Makes one folder in the open folder `parent`; does nothing if the name is taken.
void makeFolder(int parent, const fs::path& name) {
  if (mkdirat(parent, name.c_str(), usersAlone) != 0) return;
  // The umask can only take rights away, perhaps the user's own. If they cannot be given back, using the
  // folder fails.
  [[maybe_unused]] const int given = fchmodat(parent, name.c_str(), usersAlone, AT_SYMLINK_NOFOLLOW);
}

bool isClosed(const FileDescriptor& folder) {
  struct stat status {};
  return fstat(folder.get(), &status) == 0 && status.st_uid == geteuid() &&
         (status.st_mode & allPermissions) == usersAlone;
}

}  // namespace

bool makeFolders(const fs::path& folder) {
  std::error_code error;
  fs::path made;
  for (const auto& each : folder) {
    made /= each;
    if (!fs::exists(made, error)) makeFolder(AT_FDCWD, made);
  }
  return fs::is_directory(folder, error);
}

FileDescriptor openClosedFolder(const fs::path& shared, const fs::path& folder, bool make) {
  FileDescriptor open(::open(shared.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  for (const auto& each : folder.lexically_relative(shared)) {
    if (each.empty()) continue;  // after a slash at the end
    if (make) makeFolder(open.get(), each);
    FileDescriptor inner(openat(open.get(), each.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!inner || !isClosed(inner)) return FileDescriptor();
    open = std::move(inner);
  }
  return open;
}

}  // namespace tavelo::posix
