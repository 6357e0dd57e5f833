#pragma once

#include <string>

#include "platform/Accessibility.h"

namespace tavelo::simulated {

class SimulatedApplication;

/// An accessibility element of the simulated desktop. It answers for itself alone; the rules that hold for
/// all (trust, dead and hung applications, threads) are applied by `SimulatedAccessibility` before it is
/// asked.
class SimulatedElement : public platform::AXUIElement {
 public:
  /// The application whose process answers; null when no application has to.
  virtual SimulatedApplication* respondent() const = 0;

  /// Whether what the element stands for is still there (and shown, for a menu item).
  virtual bool exists() const = 0;

  /// How events call it, for example "Notes/body".
  virtual std::string description() const = 0;

  virtual platform::AXError copyAttribute(const std::string& attribute, platform::AXValue& value);
  virtual platform::AXError setAttribute(const std::string& attribute, const platform::AXValue& value);
  virtual platform::AXError perform(const std::string& action);
};

}  // namespace tavelo::simulated
