#pragma once

#include <string>

#include "platform/Accessibility.h"

namespace tavelo::simulated {

class SimulatedElement;
class SimulatedWorkspace;
class World;

/// Accessibility of the simulated desktop, with the rules that hold for every element. Calls fail with
/// `apiDisabled` without trust, with `invalidUIElement` if the application has ended, and with
/// `cannotComplete` if it hangs, after `SimulatedApplication::callBound`.
class SimulatedAccessibility final : public platform::Accessibility {
 public:
  SimulatedAccessibility(World& world, SimulatedWorkspace& workspace);

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

  /// The default is trusted.
  void setTrusted(bool trusted);
  bool trusted() const { return trusted_; }

  /// How often the prompt was shown.
  int prompts() const { return prompts_; }

  /// How many calls were made on elements.
  int calls() const { return calls_; }

 private:
  /// The element if it can answer; otherwise null, with the reason in `error`.
  SimulatedElement* answering(const platform::AXUIElementRef& element, platform::AXError& error);

  World& world_;
  SimulatedWorkspace& workspace_;
  bool trusted_ = true;
  int prompts_ = 0;
  int calls_ = 0;
};

}  // namespace tavelo::simulated
