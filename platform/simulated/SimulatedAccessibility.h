#pragma once

#include <optional>
#include <string>

#include "platform/Accessibility.h"
#include "platform/Time.h"

namespace tavelo::simulated {

class SimulatedElement;
class SimulatedWorkspace;
class World;

/// Accessibility of the simulated desktop, with the rules that hold for every element: without trust calls
/// fail with `apiDisabled`, an application that has ended with `invalidUIElement`, one that hangs with
/// `cannotComplete` after the call's bound has passed.
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

  /// Trusted unless set otherwise.
  void setTrusted(bool trusted);
  bool trusted() const { return trusted_; }

  /// How often the prompt was shown.
  int prompts() const { return prompts_; }

  /// The person grants the trust so long after the next prompts.
  void grantTrustAfterPrompt(platform::Seconds delay) { grantAfterPrompt_ = delay; }

  /// How many calls on elements there were.
  int calls() const { return calls_; }

 private:
  /// The element when it may be asked; else null and why in `error`.
  SimulatedElement* answering(const platform::AXUIElementRef& element, platform::AXError& error);

  World& world_;
  SimulatedWorkspace& workspace_;
  bool trusted_ = true;
  int prompts_ = 0;
  int calls_ = 0;
  std::optional<platform::Seconds> grantAfterPrompt_;
};

/// The result of a call as events call it, for example "refused".
const char* nameOf(platform::AXError error);

}  // namespace tavelo::simulated
