#pragma once

#include <optional>
#include <string>

namespace tavelo::platform {

/// Files that come with the program. Main thread.
class Resources {
 public:
  virtual ~Resources() = default;

  /// The bytes of a resource, for example "AppIcon" of type "icns"; absent if the program does not have it.
  virtual std::optional<std::string> data(const std::string& name, const std::string& type) const = 0;
};

}  // namespace tavelo::platform
