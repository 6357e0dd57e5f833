#pragma once

#include "platform/Accessibility.h"

namespace tavelo::qt {

/// Accessibility on a desktop that has no way to it: the process is not trusted and every call is refused.
/// Main thread.
class AbsentAccessibility final : public platform::Accessibility {
 public:
  bool isProcessTrusted() override { return false; }
  /// There is nothing to switch on, so no prompt either.
  bool isProcessTrustedWithOptions(const platform::AXTrustedCheckOptions&) override { return false; }
  platform::AXUIElementRef createSystemWide() override;
  platform::AXUIElementRef createApplication(platform::ProcessIdentifier process) override;
  platform::AXError copyAttributeValue(const platform::AXUIElementRef& element, const std::string& attribute,
                                       platform::AXValue& value) override;
  platform::AXError setAttributeValue(const platform::AXUIElementRef& element, const std::string& attribute,
                                      const platform::AXValue& value) override;
  platform::AXError performAction(const platform::AXUIElementRef& element,
                                  const std::string& action) override;
};

}  // namespace tavelo::qt
