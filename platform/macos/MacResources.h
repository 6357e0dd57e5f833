#pragma once

#include "platform/Resources.h"

namespace tavelo::macos {

/// The files in the program's bundle. Main thread.
class MacResources final : public platform::Resources {
 public:
  std::optional<std::string> data(const std::string& name, const std::string& type) const override;
};

}  // namespace tavelo::macos
