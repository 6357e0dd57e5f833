#pragma once

#include <utility>

#include <unistd.h>

namespace tavelo::posix {

/// Owns a file descriptor; -1 means none.
class FileDescriptor final {
 public:
  explicit FileDescriptor(int descriptor = -1) : descriptor_(descriptor) {}
  ~FileDescriptor() { close(); }
  FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
  }

  explicit operator bool() const { return descriptor_ >= 0; }
  int get() const { return descriptor_; }

  /// Closes now. False if the system reports that an earlier write failed.
  bool close() { return descriptor_ < 0 || ::close(std::exchange(descriptor_, -1)) == 0; }

 private:
  int descriptor_;
};

}  // namespace tavelo::posix
