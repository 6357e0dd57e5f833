#pragma once

#include <ApplicationServices/ApplicationServices.h>

#include "platform/Accessibility.h"

namespace tavelo::macos {

/// Owns one element of the system. Main thread.
class AccessibilityElement final : public platform::AXUIElement {
 public:
  /// Takes over the caller's reference. It may be null, as for a process that has ended; then calls fail.
  explicit AccessibilityElement(::AXUIElementRef owned) : element_(owned) {}
  ~AccessibilityElement() override {
    if (element_ != nullptr) CFRelease(element_);
  }
  AccessibilityElement(const AccessibilityElement&) = delete;
  AccessibilityElement& operator=(const AccessibilityElement&) = delete;

  /// Valid as long as this object.
  ::AXUIElementRef get() const { return element_; }

 private:
  const ::AXUIElementRef element_;
};

}  // namespace tavelo::macos
