#include "platform/simulated/SimulatedFileManager.h"

#include "platform/simulated/World.h"

namespace tavelo::simulated {
namespace {

namespace fs = std::filesystem;

std::string withSize(const fs::path& file, std::size_t bytes) {
  return file.filename().string() + " (" + std::to_string(bytes) + " bytes)";
}

}  // namespace

SimulatedFileManager::SimulatedFileManager(World& world)
    : world_(world), entries_{{temporaryDirectory(), std::nullopt}} {}

std::optional<fs::path> SimulatedFileManager::applicationSupportDirectory() const {
  world_.requireMainThread("FileManager::applicationSupportDirectory");
  return "/home/person/share";
}

fs::path SimulatedFileManager::temporaryDirectory() const {
  world_.requireMainThread("FileManager::temporaryDirectory");
  return "/temporary";
}

bool SimulatedFileManager::createDirectory(const fs::path& folder) {
  world_.requireMainThread("FileManager::createDirectory");
  if (isFolder(folder)) return true;
  const bool made = !refusesFolders_ && makeFolder(folder);
  world_.report(WorldEvent::Kind::file,
                (made ? "made folder " : "could not make folder ") + folder.filename().string());
  return made;
}

bool SimulatedFileManager::fileExists(const fs::path& path) const {
  world_.requireMainThread("FileManager::fileExists");
  return isFolder(path) || entries_.contains(path.lexically_normal());
}

std::optional<std::string> SimulatedFileManager::contents(const fs::path& file) const {
  world_.requireMainThread("FileManager::contents");
  auto contents = peek(file);
  world_.report(WorldEvent::Kind::file, contents ? "read " + withSize(file, contents->size())
                                                 : "could not read " + file.filename().string());
  return contents;
}

bool SimulatedFileManager::writeAtomically(const fs::path& file, std::string_view contents) {
  world_.requireMainThread("FileManager::writeAtomically");
  const fs::path path = file.lexically_normal();
  const bool written = !refusesWrites_ && !isFolder(path) && isFolder(path.parent_path());
  if (written) entries_[path] = std::string{contents};
  world_.report(WorldEvent::Kind::file,
                (written ? "wrote " : "could not write ") + withSize(file, contents.size()));
  return written;
}

std::optional<std::string> SimulatedFileManager::peek(const fs::path& file) const {
  const auto found = entries_.find(file.lexically_normal());
  return found == entries_.end() ? std::nullopt : found->second;
}

bool SimulatedFileManager::isFolder(const fs::path& path) const {
  const fs::path folder = path.lexically_normal();
  if (folder == folder.root_path()) return true;
  const auto found = entries_.find(folder);
  return found != entries_.end() && !found->second;
}

bool SimulatedFileManager::makeFolder(const fs::path& folder) {
  const fs::path path = folder.lexically_normal();
  for (fs::path each = path; each != each.root_path(); each = each.parent_path()) {
    if (entries_.contains(each) && !isFolder(each)) return false;
  }
  for (fs::path each = path; each != each.root_path(); each = each.parent_path())
    entries_[each] = std::nullopt;
  return true;
}

}  // namespace tavelo::simulated
