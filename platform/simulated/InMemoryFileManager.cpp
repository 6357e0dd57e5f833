#include "platform/simulated/InMemoryFileManager.h"

#include <iterator>
#include <utility>

namespace tavelo::simulated {

namespace fs = std::filesystem;

InMemoryFileManager::InMemoryFileManager() : applicationSupport_("/home/person/share") {
  putFolder(temporaryDirectory());
}

std::optional<fs::path> InMemoryFileManager::applicationSupportDirectory() const {
  return applicationSupport_;
}

fs::path InMemoryFileManager::temporaryDirectory() const { return "/temporary"; }

bool InMemoryFileManager::createDirectory(const fs::path& folder) {
  if (isFolder(folder)) return true;
  if (refusesFolders_) return false;
  for (fs::path each = folder.lexically_normal(); each != each.root_path(); each = each.parent_path()) {
    if (fileExists(each) && !isFolder(each)) return false;
  }
  putFolder(folder);
  return true;
}

bool InMemoryFileManager::fileExists(const fs::path& path) const {
  return isFolder(path) || entries_.contains(path.lexically_normal());
}

std::optional<std::string> InMemoryFileManager::contents(const fs::path& file) const {
  const auto found = entries_.find(file.lexically_normal());
  if (found == entries_.end() || unreadable_.contains(found->first)) return std::nullopt;
  return found->second;
}

bool InMemoryFileManager::writeAtomically(const fs::path& file, std::string_view contents) {
  const fs::path path = file.lexically_normal();
  if (writeFault_ != WriteFault::none || isFolder(path) || !isFolder(path.parent_path())) return false;
  entries_[path] = std::string{contents};
  return true;
}

void InMemoryFileManager::setApplicationSupportDirectory(std::optional<fs::path> directory) {
  applicationSupport_ = std::move(directory);
}

void InMemoryFileManager::put(const fs::path& file, std::string contents) {
  putFolder(file.parent_path());
  entries_[file.lexically_normal()] = std::move(contents);
}

void InMemoryFileManager::putFolder(const fs::path& folder) {
  for (fs::path each = folder.lexically_normal(); each != each.root_path(); each = each.parent_path()) {
    entries_[each] = std::nullopt;
  }
}

void InMemoryFileManager::remove(const fs::path& path) {
  const fs::path removed = path.lexically_normal();
  std::erase_if(entries_, [&removed](const auto& entry) {
    const fs::path relative = entry.first.lexically_relative(removed);
    return !relative.empty() && *relative.begin() != "..";
  });
}

bool InMemoryFileManager::isFolder(const fs::path& path) const {
  const fs::path folder = path.lexically_normal();
  if (folder == folder.root_path()) return true;
  const auto found = entries_.find(folder);
  return found != entries_.end() && !found->second;
}

}  // namespace tavelo::simulated
