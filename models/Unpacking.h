#pragma once

#include <atomic>
#include <filesystem>
#include <optional>
#include <string>

namespace tavelo::models {

/// Why an archive could not be unpacked.
struct UnpackFailure {
  enum class Kind {
    /// The archive is not what it should be: another one may be.
    archive,
    /// The disk is full or not writable.
    disk,
    cancelled
  };
  Kind kind = Kind::archive;
  /// A clause that follows the name of the archive ("is not whole"), or for `disk` a whole sentence.
  std::string text;
};

/// Unpacks a zip or tar archive (plain, gzip or bzip2) into `folder`, an existing folder that only the user
/// may enter, and flushes each file to the disk.
///
/// Makes nothing but files and folders. An archive with anything else in it, with a name that leads out of
/// the folder, with a name twice, or with far more in it than its size allows for is refused. What was
/// unpacked until then stays for the caller to remove. Blocking; any thread; looks at `cancelled` as it goes.
std::optional<UnpackFailure> unpack(const std::filesystem::path& archive, const std::filesystem::path& folder,
                                    const std::atomic<bool>& cancelled);

}  // namespace tavelo::models
