#pragma once

#include "platform/FileManager.h"

namespace tavelo::simulated {

class World;

/// The desktop's file manager: reports what the program does with the files behind it, and checks the thread.
class ObservedFileManager final : public platform::FileManager {
 public:
  /// `files` must outlive this.
  ObservedFileManager(World& world, platform::FileManager& files);

  std::optional<std::filesystem::path> applicationSupportDirectory() const override;
  std::filesystem::path temporaryDirectory() const override;
  bool createDirectory(const std::filesystem::path& folder) override;
  bool fileExists(const std::filesystem::path& path) const override;
  std::optional<std::string> contents(const std::filesystem::path& file) const override;
  bool writeAtomically(const std::filesystem::path& file, std::string_view contents) override;

 private:
  World& world_;
  platform::FileManager& files_;
};

}  // namespace tavelo::simulated
