#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace tavelo::platform {

/// How to activate an application, with macOS's raw values.
enum class ActivationOptions : std::uint32_t { none = 0, activateIgnoringOtherApps = 2 };

/// A process identifier.
using ProcessIdentifier = std::int32_t;

/// An application that runs, or ran when the reference was taken. Shared. Main thread.
class RunningApplication {
 public:
  virtual ~RunningApplication() = default;

  /// The name shown to the user; absent if it has none.
  virtual std::optional<std::string> localizedName() const = 0;

  /// For example "org.xfce.mousepad"; on Linux the name of its desktop file. Absent if it has none.
  virtual std::optional<std::string> bundleIdentifier() const = 0;

  virtual ProcessIdentifier processIdentifier() const = 0;

  /// Whether the process has ended.
  virtual bool isTerminated() const = 0;

  /// Asks the system to bring the application to the front, which happens later. False if it refuses.
  virtual bool activate(ActivationOptions options) = 0;
};

/// The running applications and the desktop as a whole. Main thread.
class Workspace {
 public:
  virtual ~Workspace() = default;

  /// The application that receives key events now; null if the system reports none.
  virtual std::shared_ptr<RunningApplication> frontmostApplication() = 0;

  /// Whether our windows can be translucent now, which needs a compositor on Linux.
  virtual bool windowsMayBeTranslucent() = 0;

  /// Opens `url` in the user's browser. False on failure.
  virtual bool open(const std::string& url) = 0;
};

}  // namespace tavelo::platform
