#pragma once

#include <string>

#include "platform/Accessibility.h"
#include "platform/TurnBudget.h"

namespace tavelo::macos {

/// The accessibility of macOS. Main thread.
///
/// Each call may take as long as the turn of the main queue still allows; after that, calls return
/// `cannotComplete` at once. The value of a password field cannot be read.
class MacAccessibility final : public platform::Accessibility {
 public:
  MacAccessibility(platform::MainQueue& mainQueue, const platform::Clock& clock);

  bool isProcessTrusted() override;
  bool isProcessTrustedWithOptions(const platform::AXTrustedCheckOptions& options) override;
  platform::AXUIElementRef createSystemWide() override;
  platform::AXUIElementRef createApplication(platform::ProcessIdentifier process) override;
  platform::AXError copyAttributeValue(const platform::AXUIElementRef& element, const std::string& attribute,
                                       platform::AXValue& value) override;
  platform::AXError setAttributeValue(const platform::AXUIElementRef& element, const std::string& attribute,
                                      const platform::AXValue& value) override;
  platform::AXError performAction(const platform::AXUIElementRef& element,
                                  const std::string& action) override;

 private:
  platform::TurnBudget budget_;
};

}  // namespace tavelo::macos
