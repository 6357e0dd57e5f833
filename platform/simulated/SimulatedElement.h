#pragma once

#include <string>

#include "platform/Accessibility.h"

namespace tavelo::simulated {

class SimulatedApplication;

/// An accessibility element of the simulated desktop. Before asking an element, `SimulatedAccessibility`
/// applies the rules that hold for all of them: trust, ended and hung applications, threads.
class SimulatedElement : public platform::AXUIElement {
 public:
  /// The application whose process answers; null if no application has to.
  virtual SimulatedApplication* respondent() const = 0;

  /// Whether the element's object is still there (and shown, for a menu item).
  virtual bool exists() const = 0;

  /// The name used in events, for example "Notes/body".
  virtual std::string description() const = 0;

  virtual platform::AXError copyAttribute(const std::string& /*attribute*/, platform::AXValue& /*value*/) {
    return platform::AXError::attributeUnsupported;
  }
  virtual platform::AXError setAttribute(const std::string& /*attribute*/,
                                         const platform::AXValue& /*value*/) {
    return platform::AXError::attributeUnsupported;
  }
  virtual platform::AXError perform(const std::string& /*action*/) {
    return platform::AXError::actionUnsupported;
  }
};

}  // namespace tavelo::simulated
