#pragma once

#include <memory>

#include "platform/Accessibility.h"
#include "platform/Workspace.h"

namespace tavelo {

/// Where the user was typing at one moment. A plain value; copies share the two objects. The fields are read
/// separately, so the element need not belong to the application.
struct FocusTarget {
  /// The frontmost application; null if the platform reported none.
  std::shared_ptr<platform::RunningApplication> application;
  /// The element with the keyboard focus; null if accessibility reported none.
  platform::AXUIElementRef element;
};

}  // namespace tavelo
