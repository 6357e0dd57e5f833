#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <stdlib.h>

namespace tavelo {

/// A temporary folder, deleted at the end.
class TemporaryFolder final {
 public:
  TemporaryFolder() {
    std::string name = std::filesystem::temp_directory_path() / "tavelo-test-XXXXXX";
    path_ = mkdtemp(name.data());
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

  void write(const std::string& file, const std::string& contents) const {
    std::filesystem::create_directories((path_ / file).parent_path());
    std::ofstream{path_ / file, std::ios::binary} << contents;
  }

  std::string read(const std::string& file) const {
    std::ostringstream contents;
    contents << std::ifstream{path_ / file, std::ios::binary}.rdbuf();
    return contents.str();
  }

 private:
  std::filesystem::path path_;
};

}  // namespace tavelo
