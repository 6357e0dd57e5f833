#pragma once

#include "platform/posix/PosixFileManager.h"

namespace tavelo::macos {

/// The user's files on a Mac. The application-support directory is the one in the user's library, and the
/// temporary directory is the user's own. Everything else is as on every POSIX system. Main thread.
class MacFileManager final : public posix::PosixFileManager {
 public:
  std::optional<std::filesystem::path> applicationSupportDirectory() const override;
  std::filesystem::path temporaryDirectory() const override;
};

}  // namespace tavelo::macos
