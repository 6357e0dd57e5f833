#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tavelo::linuxdesktop {

/// Whether the desktop starts the program when the user logs in: the entry `autostart/tavelo.desktop` in the
/// user's folder for configuration, or one for all users. Reads the files at each call. Main thread.
class Autostart final {
 public:
  enum class State : std::uint8_t {
    off,
    on,
    /// On, but the entry starts another copy of the program, or one that is no longer there.
    elsewhere,
    /// The entry of this name starts another program, and this one is not started.
    foreign,
  };
  struct Status {
    State state = State::off;
    /// What the entry starts; empty if it is off.
    std::string program;
  };

  /// `systemFolders` are the folders for configuration that all users share, the first of which counts most.
  /// `program` is this program's file.
  Autostart(const std::optional<std::filesystem::path>& configHome,
            const std::vector<std::filesystem::path>& systemFolders, std::filesystem::path program);

  /// With the folders that the environment names.
  static Autostart ofUser();

  Status status() const;

  /// Switches it on, for this copy of the program, or off. What else stands in the user's entry stays; an
  /// entry that starts another program is not touched. Returns why it failed, as a clause, or
  /// nothing.
  std::string set(bool on);

  /// The user's entry; absent if there is no folder for it.
  const std::optional<std::filesystem::path>& file() const { return file_; }

 private:
  /// Absent if there is none.
  std::optional<std::string> systemEntry() const;
  Status statusOf(const std::string& entry) const;
  std::string newEntry() const;
  std::string write(const std::string& entry) const;
  std::string writeAnew(const std::string& entry) const;
  std::string switchOff(const std::optional<std::string>& entry) const;

  std::optional<std::filesystem::path> file_;
  std::vector<std::filesystem::path> systemFiles_;
  const std::filesystem::path program_;
};

}  // namespace tavelo::linuxdesktop
