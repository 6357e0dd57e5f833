#pragma once

#include <optional>
#include <string>

namespace tavelo::platform {

/// Files that come with the program. Main thread.
class Resources {
 public:
  virtual ~Resources() = default;

  /// The bytes of the resource, for example "AppIcon" of type "icns"; absent when the program does not carry
  /// it.
  virtual std::optional<std::string> data(const std::string& name, const std::string& type) const = 0;
};

}  // namespace tavelo::platform
