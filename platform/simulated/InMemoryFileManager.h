#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "platform/FileManager.h"

namespace tavelo::simulated {

/// What happens to the program's writes.
enum class WriteFault : std::uint8_t {
  none,
  /// The disk is full.
  noSpace,
  /// The write breaks off half-way.
  torn,
};

/// Files in memory, with faults. The temporary directory exists at first, the application-support directory
/// does not.
class InMemoryFileManager final : public platform::FileManager {
 public:
  InMemoryFileManager();

  std::optional<std::filesystem::path> applicationSupportDirectory() const override;
  std::filesystem::path temporaryDirectory() const override;
  bool createDirectory(const std::filesystem::path& folder) override;
  bool fileExists(const std::filesystem::path& path) const override;
  std::optional<std::string> contents(const std::filesystem::path& file) const override;
  bool writeAtomically(const std::filesystem::path& file, std::string_view contents) override;

  /// "/home/person/share" unless set; absent for a platform that names none.
  void setApplicationSupportDirectory(std::optional<std::filesystem::path> directory);

  /// Puts a file (or, below, a folder) there with its parents, whatever the faults.
  void put(const std::filesystem::path& file, std::string contents);
  void putFolder(const std::filesystem::path& folder);
  /// Removes a file, or a folder with all in it.
  void remove(const std::filesystem::path& path);

  /// No folder can be made from now on.
  void setRefusesFolders(bool refuses) { refusesFolders_ = refuses; }
  /// The file is there and cannot be read.
  void setUnreadable(const std::filesystem::path& file) { unreadable_.insert(file); }
  void setWriteFault(WriteFault fault) { writeFault_ = fault; }

 private:
  bool isFolder(const std::filesystem::path& path) const;

  /// A file's content; absent for a folder.
  std::map<std::filesystem::path, std::optional<std::string>> entries_;
  std::optional<std::filesystem::path> applicationSupport_;
  std::set<std::filesystem::path> unreadable_;
  bool refusesFolders_ = false;
  WriteFault writeFault_ = WriteFault::none;
};

}  // namespace tavelo::simulated
