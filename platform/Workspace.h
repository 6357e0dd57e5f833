#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace tavelo::platform {

/// Raw values are the platform's.
enum class ActivationOptions : std::uint32_t { none = 0, activateIgnoringOtherApps = 2 };

/// A process identifier.
using ProcessIdentifier = std::int32_t;

/// An application that runs, or ran when the reference was taken. Main thread; shared by all who refer to it.
class RunningApplication {
 public:
  virtual ~RunningApplication() = default;

  /// The name the user knows it by; absent when it has none.
  virtual std::optional<std::string> localizedName() const = 0;

  /// For example "org.xfce.mousepad"; absent for a process without a bundle.
  virtual std::optional<std::string> bundleIdentifier() const = 0;

  virtual ProcessIdentifier processIdentifier() const = 0;

  /// Whether the process has ended. Stays true once it is.
  virtual bool isTerminated() const = 0;

  /// Asks the platform to bring the application to the front; takes effect later. False when it was refused.
  virtual bool activate(ActivationOptions options) = 0;
};

/// Applications and what belongs to no single one. Main thread.
class Workspace {
 public:
  virtual ~Workspace() = default;

  /// The application that receives key events now; null when the platform reports none.
  virtual std::shared_ptr<RunningApplication> frontmostApplication() = 0;

  /// Whether windows of ours may be translucent now, which needs a compositor.
  virtual bool windowsMayBeTranslucent() = 0;

  /// Opens `url` in the user's browser. False when the platform refused.
  virtual bool open(const std::string& url) = 0;
};

}  // namespace tavelo::platform
