#pragma once

#include "platform/Resources.h"

namespace tavelo::qt {

/// The files compiled into the program. Main thread.
class QtResources final : public platform::Resources {
 public:
  QtResources();
  std::optional<std::string> data(const std::string& name, const std::string& type) const override;
};

}  // namespace tavelo::qt
