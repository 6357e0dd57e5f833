#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace tavelo::recognizer {

/// The file that tells afterwards how a recogniser process failed: a line with the local time and the reason,
/// then the end of what the process wrote to standard error. The latest failure replaces the one before. One
/// thread at a time.
class RecognizerLog final {
 public:
  /// Without a file, nothing is kept.
  explicit RecognizerLog(std::optional<std::filesystem::path> file) : file_(std::move(file)) {}

  /// Makes the folder if need be. Does nothing if the file cannot be written.
  void record(const std::string& reason, const std::string& log) const;

  /// The line about the latest failure; empty if there was none in the last seven days.
  std::string latest() const;

 private:
  std::optional<std::filesystem::path> file_;
};

}  // namespace tavelo::recognizer
