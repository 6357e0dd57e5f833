#pragma once

#include <filesystem>
#include <string>

#include "platform/posix/FileDescriptor.h"

namespace tavelo::posix {

/// A lock that one process of the user holds. It lasts as long as this object; the system releases it however
/// the process ends.
class FolderLock final {
 public:
  /// The lock is a file in `folder`. Touches nothing yet.
  FolderLock(std::filesystem::path folder, const std::string& name)
      : folder_(std::move(folder)), file_(folder_ / name) {}

  /// Takes the lock without waiting. False if another process holds it, and then `errorText` is empty. False
  /// with `errorText` if the folder is unusable or others may write to it.
  bool take();
  /// Why `take` failed, in English.
  const std::string& errorText() const { return errorText_; }

 private:
  std::filesystem::path folder_;
  std::filesystem::path file_;
  std::string errorText_;
  FileDescriptor descriptor_;
};

}  // namespace tavelo::posix
