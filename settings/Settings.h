#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "platform/Environment.h"
#include "settings/SettingsLines.h"

namespace tavelo::settings {

/// Where the value of a setting comes from.
enum class Origin : std::uint8_t { unset, file, environment };

/// A plain value. Empty if it is unset.
struct Setting {
  std::string value;
  Origin origin = Origin::unset;
};

/// The settings of the platform: `Tavelo/tavelo.conf` in the user's folder for configuration, with keys named
/// like environment variables; see `names`. A variable of the environment wins. Whatever stands in the file,
/// every call returns. Main thread.
class Settings final {
 public:
  /// The value of an environment variable; empty when it is not set.
  using Environment = std::function<std::string(const char* name)>;

  /// Reads the file. Without `configHome` there is none.
  explicit Settings(std::optional<std::filesystem::path> configHome,
                    Environment environment = platform::environmentVariable);

  /// With the folder that the environment names.
  static Settings ofUser();

  /// As it stood in the file when that was read last.
  Setting get(const char* name) const;
  std::string value(const char* name) const { return get(name).value; }

  /// Reads the file again. True if it gives any setting another value now.
  bool reload();

  /// Why the file, or a part of it, could not be read: a clause that follows the file's name and a colon.
  /// Empty if all of it was, or if there is no file. What could be read counts.
  const std::string& error() const { return error_; }

  /// Absent if there is no folder for it.
  std::optional<std::filesystem::path> file() const { return file_; }

  /// Changes these settings in the file, in one step; an empty value removes its line. Everything else in the
  /// file stays. A symbolic link is followed. Returns why nothing was written, as a clause, or
  /// nothing. `get` does not know of it before `reload`.
  std::string write(const Values& changes);

 private:
  struct Read {
    std::string text;
    std::string error;
  };
  Read read() const;

  Environment environment_;
  std::optional<std::filesystem::path> file_;
  Values values_;
  std::string error_;
};

}  // namespace tavelo::settings
