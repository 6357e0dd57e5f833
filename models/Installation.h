#pragma once

#include <atomic>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "models/KnownModels.h"
#include "models/ModelFiles.h"
#include "models/Unpacking.h"
#include "platform/posix/FileDescriptor.h"

namespace tavelo::models {

/// Where models, libraries and half-made downloads are.
struct Folders {
  /// The program's own folder in the user's data home.
  std::filesystem::path home;
  /// For parts of downloads.
  std::filesystem::path cache;

  std::filesystem::path models() const { return home / "models"; }
  std::filesystem::path model(std::string_view locale) const { return models() / locale; }
  std::filesystem::path libraries() const { return home / "lib"; }

  /// The user's, with that data home. Absent without a home.
  static std::optional<Folders> ofUser(const std::optional<std::filesystem::path>& dataHome);
};

/// The right to change what is installed; another process cannot have it at the same time. Any thread.
class InstallationLock final {
 public:
  /// Makes the folders, for the user alone, and takes the lock without waiting. Returns one sentence if that
  /// fails; empty if it worked.
  std::string take(const Folders& folders);

 private:
  posix::FileDescriptor folder_;
};

// Blocking; any thread, with the lock held. What is installed is replaced only when the new files are
// complete; a failure leaves the old ones in place and nothing half-made.

/// Cleans up after an installation that was killed.
void recover(const Folders& folders, std::string_view locale);

enum class ModelState {
  /// Not there, or another one, or from another archive.
  missing,
  installed,
  /// There is a model that we did not install.
  usersOwn,
  /// The note of its origin is not a file.
  unreadable
};

/// What there is of a model. With a `sha256`, its archive must have had that checksum.
ModelState stateOf(const Folders& folders, const KnownModel& model, const std::string& sha256);

/// Unpacks an archive that was checked, and puts its model where the locale's model belongs.
std::optional<UnpackFailure> installModel(const Folders& folders, const KnownModel& model,
                                          const std::filesystem::path& archive, const Origin& origin,
                                          const std::atomic<bool>& cancelled);

/// The same for the library of an engine.
std::optional<UnpackFailure> installLibrary(const Folders& folders, Engine engine,
                                            const std::filesystem::path& archive,
                                            const std::atomic<bool>& cancelled);

}  // namespace tavelo::models
