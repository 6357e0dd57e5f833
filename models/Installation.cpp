#include "models/Installation.h"

#include <cerrno>
#include <cstdlib>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "language/Language.h"
#include "language/SystemErrors.h"
#include "language/Texts.h"
#include "platform/Environment.h"
#include "platform/posix/ClosedFolder.h"

namespace tavelo::models {
namespace {

using language::say;
namespace words = language::words;

namespace fs = std::filesystem;
using Result = std::optional<UnpackFailure>;

constexpr const char* newPrefix = ".new.";
constexpr const char* oldName = ".old";

UnpackFailure cannotWrite(const fs::path& path) {
  return {UnpackFailure::Kind::disk,
          say(words::cannotWriteTo, {path.string(), language::systemError(errno)})};
}
UnpackFailure refuse(std::string why) { return {UnpackFailure::Kind::archive, std::move(why)}; }

/// A folder beside the place where something will be installed; removed with all that is in it.
class Staging final {
 public:
  explicit Staging(const fs::path& parent) : folder_(parent / (std::string(newPrefix) + "XXXXXX")) {
    std::string name = folder_;
    isMade_ = ::mkdtemp(name.data()) != nullptr;
    folder_ = name;
  }
  ~Staging() {
    std::error_code ignored;
    if (isMade_) fs::remove_all(folder_, ignored);
  }
  Staging(const Staging&) = delete;
  Staging& operator=(const Staging&) = delete;

  bool isMade() const { return isMade_; }
  const fs::path& folder() const { return folder_; }

 private:
  fs::path folder_;
  bool isMade_ = false;
};

/// Flushes a file or folder to the disk.
bool flush(const fs::path& path) {
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return false;
  const bool isFlushed = ::fsync(descriptor) == 0;
  return ::close(descriptor) == 0 && isFlushed;
}

bool writeOrigin(const fs::path& modelFolder, const Origin& origin) {
  const fs::path note = modelFolder / originFileName;
  const std::string text = origin.name + " " + origin.sha256 + " " + origin.compared + "\n";
  const int file = ::open(note.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0644);
  if (file < 0) return false;
  const bool isWritten =
      ::write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size()) && ::fsync(file) == 0;
  return ::close(file) == 0 && isWritten;
}

bool isTaken(const fs::path& path) {
  std::error_code error;
  return fs::exists(fs::symlink_status(path, error));
}

/// Two renames. If we are killed between them, `recover` brings the old model back.
bool replaceFolder(const fs::path& fresh, const fs::path& place) {
  const fs::path old = place.parent_path() / oldName;
  if (isTaken(place) && ::rename(place.c_str(), old.c_str()) != 0) return false;
  if (::rename(fresh.c_str(), place.c_str()) != 0) {
    const int why = errno;
    ::rename(old.c_str(), place.c_str());
    errno = why;
    return false;
  }
  flush(place.parent_path());
  std::error_code ignored;
  fs::remove_all(old, ignored);
  return true;
}

}  // namespace

std::optional<Folders> Folders::ofUser(const std::optional<fs::path>& dataHome) {
  // As everywhere in the program, a relative path does not count.
  fs::path cache = platform::environmentVariable("XDG_CACHE_HOME");
  if (!cache.is_absolute()) cache = fs::path(platform::environmentVariable("HOME")) / ".cache";
  if (!dataHome || !cache.is_absolute()) return std::nullopt;
  return Folders{*dataHome / "Tavelo", cache / "Tavelo"};
}

std::string InstallationLock::take(const Folders& folders) {
  for (const auto& folder : {folders.models(), folders.libraries(), folders.cache}) {
    if (!posix::makeFolders(folder) || ::access(folder.c_str(), W_OK | X_OK) != 0)
      return say(words::cannotWriteInto, {folder.string()});
  }
  // The folder itself, so that no file is left behind.
  folder_ = posix::FileDescriptor(::open(folders.cache.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder_ && ::flock(folder_.get(), LOCK_EX | LOCK_NB) == 0) return {};
  return errno == EWOULDBLOCK ? say(words::alreadyFetching)
                              : say(words::cannotLock, {folders.cache.string()});
}

void recover(const Folders& folders, std::string_view locale) {
  std::error_code ignored;
  for (const auto& parent : {folders.models(), folders.libraries()}) {
    std::vector<fs::path> leftovers;
    for (const auto& entry : fs::directory_iterator(parent, ignored)) {
      if (entry.path().filename().string().starts_with(newPrefix)) leftovers.push_back(entry.path());
    }
    for (const auto& each : leftovers) fs::remove_all(each, ignored);
  }
  const fs::path old = folders.models() / oldName;
  if (!isTaken(folders.model(locale))) fs::rename(old, folders.model(locale), ignored);
  fs::remove_all(old, ignored);
}

ModelState stateOf(const Folders& folders, const KnownModel& model, const std::string& sha256) {
  const fs::path folder = folders.model(model.locale);
  if (!engineOfModel(folder)) return ModelState::missing;
  const auto origin = originOf(folder);
  if (!origin) return ModelState::usersOwn;
  if (!origin->isReadable) return ModelState::unreadable;
  const bool isIt = origin->name == model.name && (sha256.empty() || origin->sha256 == sha256);
  return isIt ? ModelState::installed : ModelState::missing;
}

Result installModel(const Folders& folders, const KnownModel& model, const fs::path& archive,
                    const Origin& origin, const std::atomic<bool>& cancelled) {
  const Staging staging(folders.models());
  if (!staging.isMade()) return cannotWrite(staging.folder());
  if (auto failure = unpack(archive, staging.folder(), cancelled)) return failure;
  const auto found = findModelFolder(staging.folder(), model.engine);
  if (!found) return refuse(say(words::noModelInIt));
  if (const auto flaw = flawOfModel(*found); !flaw.empty()) return refuse(say(words::unsoundModel, {flaw}));
  if (originOf(*found)) return refuse(say(words::hasOrigin, {originFileName}));
  if (!writeOrigin(*found, origin) || ::chmod(found->c_str(), 0755) != 0) return cannotWrite(*found);
  const fs::path place = folders.model(model.locale);
  if (cancelled) return UnpackFailure{UnpackFailure::Kind::cancelled, {}};
  if (!replaceFolder(*found, place)) return cannotWrite(place);
  return std::nullopt;
}

Result installLibrary(const Folders& folders, Engine engine, const fs::path& archive,
                      const std::atomic<bool>& cancelled) {
  const Staging staging(folders.libraries());
  if (!staging.isMade()) return cannotWrite(staging.folder());
  if (auto failure = unpack(archive, staging.folder(), cancelled)) return failure;
  const auto found = findLibraryFolder(staging.folder(), engine);
  const auto files = libraryFiles(engine);
  if (!found) return refuse(say(words::noLibraryInIt, {std::string(files[0].name)}));
  if (cancelled) return UnpackFailure{UnpackFailure::Kind::cancelled, {}};
  // The files belong together. While the first one is missing there is no library, so that a run that is
  // killed here never leaves files of two versions behind.
  const fs::path first = folders.libraries() / files[0].name;
  if (files.size() > 1 && ::unlink(first.c_str()) != 0 && errno != ENOENT) return cannotWrite(first);
  for (auto file = files.rbegin(); file != files.rend(); ++file) {
    const fs::path from = *found / file->name;
    const fs::path to = folders.libraries() / file->name;
    if (::chmod(from.c_str(), 0755) != 0 || ::rename(from.c_str(), to.c_str()) != 0) return cannotWrite(to);
  }
  flush(folders.libraries());
  return std::nullopt;
}

}  // namespace tavelo::models
