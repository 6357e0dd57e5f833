#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "platform/posix/FileDescriptor.h"

namespace tavelo::posix {

/// The new content of a file on its way there: a hidden file in the same folder, locked by its writer and
/// removed again unless it was put in place.
///
/// Its name follows from that of the target, so that killed writers leave at most one behind; the next writer
/// tells such a leftover from the file of a living writer by the lock.
class ReplacementFile final {
 public:
  /// An empty replacement for `target`, readable by the user alone. Absent when the folder allows no file or
  /// another process is writing the same target now.
  static std::optional<ReplacementFile> create(const std::filesystem::path& target);

  ~ReplacementFile();
  ReplacementFile(ReplacementFile&& other) noexcept;
  ReplacementFile& operator=(ReplacementFile&&) = delete;

  /// Writes everything and brings it to the disk. False when it did not all get there.
  bool write(std::string_view contents);

  /// Takes the place of the target in one step. False when it could not.
  bool putInPlace();

 private:
  ReplacementFile(std::filesystem::path target, std::filesystem::path path, FileDescriptor file);

  std::filesystem::path target_;
  /// Empty once there is nothing to remove.
  std::filesystem::path path_;
  FileDescriptor file_;
};

}  // namespace tavelo::posix
