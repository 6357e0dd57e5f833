#include "platform/simulated/ObservedFileManager.h"

#include <string>

#include "platform/simulated/World.h"

namespace tavelo::simulated {
namespace {

std::string withSize(const std::filesystem::path& file, std::size_t bytes) {
  return file.filename().string() + " (" + std::to_string(bytes) + " bytes)";
}

}  // namespace

ObservedFileManager::ObservedFileManager(World& world, platform::FileManager& files)
    : world_(world), files_(files) {}

std::optional<std::filesystem::path> ObservedFileManager::applicationSupportDirectory() const {
  world_.requireMainThread("FileManager::applicationSupportDirectory");
  return files_.applicationSupportDirectory();
}

std::filesystem::path ObservedFileManager::temporaryDirectory() const {
  world_.requireMainThread("FileManager::temporaryDirectory");
  return files_.temporaryDirectory();
}

bool ObservedFileManager::createDirectory(const std::filesystem::path& folder) {
  world_.requireMainThread("FileManager::createDirectory");
  const bool existed = files_.fileExists(folder);
  const bool made = files_.createDirectory(folder);
  if (!existed || !made) {
    world_.report(WorldEvent::Kind::file,
                  (made ? "made folder " : "could not make folder ") + folder.filename().string());
  }
  return made;
}

bool ObservedFileManager::fileExists(const std::filesystem::path& path) const {
  world_.requireMainThread("FileManager::fileExists");
  return files_.fileExists(path);
}

std::optional<std::string> ObservedFileManager::contents(const std::filesystem::path& file) const {
  world_.requireMainThread("FileManager::contents");
  auto contents = files_.contents(file);
  world_.report(WorldEvent::Kind::file, contents ? "read " + withSize(file, contents->size())
                                                 : "could not read " + file.filename().string());
  return contents;
}

bool ObservedFileManager::writeAtomically(const std::filesystem::path& file, std::string_view contents) {
  world_.requireMainThread("FileManager::writeAtomically");
  const bool written = files_.writeAtomically(file, contents);
  world_.report(WorldEvent::Kind::file,
                (written ? "wrote " : "could not write ") + withSize(file, contents.size()));
  return written;
}

}  // namespace tavelo::simulated
