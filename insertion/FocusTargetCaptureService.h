#pragma once

#include "insertion/FocusTarget.h"

namespace tavelo {

/// Finds out where the user is typing. Caches nothing; every call asks the platform. Main thread only.
class FocusTargetCaptureService final {
 public:
  FocusTargetCaptureService();

  /// The frontmost application and the focused element at this moment; either may be null. The application
  /// may be this program itself, although another one is usually in front, since ours lives in the status
  /// area.
  FocusTarget capture();

  /// The element with the keyboard focus, system-wide; null if there is none or accessibility does not say.
  platform::AXUIElementRef focusedElement();

 private:
  platform::Workspace& workspace_;
  platform::Accessibility& accessibility_;
};

}  // namespace tavelo
