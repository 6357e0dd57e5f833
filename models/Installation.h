#pragma once

#include <atomic>
#include <filesystem>
#include <optional>
#include <string>

#include "models/KnownModels.h"
#include "models/ModelFiles.h"
#include "models/Unpacking.h"

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

  /// The user's, by the XDG variables; as everywhere in the program, a relative path does not count. Absent without
  /// a home.
  static std::optional<Folders> ofUser();
};

/// The right to change what is installed. Another program that tries to get it at the same time fails. Any thread.
class InstallationLock final {
 public:
  /// Makes the folders, for the user alone. Throws a `std::runtime_error` with one sentence if another
  /// installation runs or if a folder cannot be had.
  explicit InstallationLock(const Folders& folders);
  ~InstallationLock();
  InstallationLock(const InstallationLock&) = delete;
  InstallationLock& operator=(const InstallationLock&) = delete;

 private:
  int descriptor_ = -1;
};

// Blocking; any thread, with the lock held. What is installed is replaced only when the new files are complete; a
// failure leaves the old ones in place and nothing half-made.

/// Cleans up after an installation that was killed.
void recover(const Folders& folders, std::string_view locale);

/// Whether the model need not be fetched. A model that we did not install counts: it is the user's own. With a
/// `sha256`, a model of another archive does not count. Throws a `std::runtime_error` if the note of its origin is
/// not a file.
bool isInstalled(const Folders& folders, const KnownModel& model, const std::string& sha256);

/// Unpacks an archive that was checked, and puts its model where the locale's model belongs.
std::optional<UnpackFailure> installModel(const Folders& folders, const KnownModel& model,
                                          const std::filesystem::path& archive, const Origin& origin,
                                          const std::atomic<bool>& cancelled);

/// The same for the library of an engine.
std::optional<UnpackFailure> installLibrary(const Folders& folders, Engine engine,
                                            const std::filesystem::path& archive,
                                            const std::atomic<bool>& cancelled);

}  // namespace tavelo::models
