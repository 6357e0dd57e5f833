#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/FileManager.h"

namespace tavelo::simulated {

class World;

/// Files in memory. Reports what the program does with them. At first the temporary directory exists and the
/// application-support directory does not. Main thread.
class SimulatedFileManager final : public platform::FileManager {
 public:
  explicit SimulatedFileManager(World& world);

  std::optional<std::filesystem::path> applicationSupportDirectory() const override;
  std::filesystem::path temporaryDirectory() const override;
  bool createDirectory(const std::filesystem::path& folder) override;
  bool fileExists(const std::filesystem::path& path) const override;
  std::optional<std::string> contents(const std::filesystem::path& file) const override;
  bool writeAtomically(const std::filesystem::path& file, std::string_view contents) override;

  /// The file's contents, without reporting a read; absent if there is no such file.
  std::optional<std::string> peek(const std::filesystem::path& file) const;

  /// No folder can be made while this is set.
  void setRefusesFolders(bool refuses) { refusesFolders_ = refuses; }
  /// Every write fails while this is set, as on a full disk.
  void setRefusesWrites(bool refuses) { refusesWrites_ = refuses; }

 private:
  bool isFolder(const std::filesystem::path& path) const;
  bool makeFolder(const std::filesystem::path& folder);

  World& world_;
  /// A file's contents; absent for a folder.
  std::map<std::filesystem::path, std::optional<std::string>> entries_;
  bool refusesFolders_ = false;
  bool refusesWrites_ = false;
};

}  // namespace tavelo::simulated
