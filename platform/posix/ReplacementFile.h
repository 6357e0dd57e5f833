#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/posix/FileDescriptor.h"

namespace tavelo::posix {

/// Holds the new contents of a file until they are complete: a hidden file in the same folder, locked by its
/// writer and removed again unless it is put in place.
///
/// Its name depends only on the target, so killed writers leave at most one file behind. The lock tells the
/// next writer whether such a file is a leftover or belongs to a running writer.
class ReplacementFile final {
 public:
  /// Makes an empty replacement for the file `target` in the open `folder`. Only the user can read it. No
  /// link is followed. Absent if the folder allows no new file or if another process is writing the same
  /// target.
  static std::optional<ReplacementFile> create(FileDescriptor folder, const std::string& target);

  ~ReplacementFile();
  ReplacementFile(ReplacementFile&& other) noexcept;
  ReplacementFile& operator=(ReplacementFile&&) = delete;

  /// Writes all of `contents` and flushes it to the disk. False on failure.
  bool write(std::string_view contents);

  /// Replaces the target in one step. False on failure.
  bool putInPlace();

 private:
  ReplacementFile(FileDescriptor folder, std::string target, std::string name, FileDescriptor file);

  FileDescriptor folder_;
  std::string target_;
  /// Empty if there is nothing to remove.
  std::string name_;
  FileDescriptor file_;
};

}  // namespace tavelo::posix
