#pragma once

#include "insertion/FocusTarget.h"

namespace tavelo {

/// Tells where the user is typing. Keeps nothing: every call asks the platform afresh. Main thread only.
class FocusTargetCaptureService final {
 public:
  FocusTargetCaptureService();

  /// The frontmost application and the focused element at this moment; either may be absent. This program is
  /// not left out: it lives in the status area, so another application is frontmost in normal use.
  FocusTarget capture();

  /// The element with the keyboard focus, system-wide; null when there is none or accessibility does not say.
  platform::AXUIElementRef focusedElement();

 private:
  platform::Workspace& workspace_;
  platform::Accessibility& accessibility_;
};

}  // namespace tavelo
