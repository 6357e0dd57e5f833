#include "platform/qt/AbsentAccessibility.h"

#include <memory>

namespace tavelo::qt {

using platform::AXError;

platform::AXUIElementRef AbsentAccessibility::createSystemWide() {
  return std::make_shared<platform::AXUIElement>();
}

platform::AXUIElementRef AbsentAccessibility::createApplication(platform::ProcessIdentifier) {
  return std::make_shared<platform::AXUIElement>();
}

AXError AbsentAccessibility::copyAttributeValue(const platform::AXUIElementRef&, const std::string&,
                                                platform::AXValue&) {
  return AXError::apiDisabled;
}

AXError AbsentAccessibility::setAttributeValue(const platform::AXUIElementRef&, const std::string&,
                                               const platform::AXValue&) {
  return AXError::apiDisabled;
}

AXError AbsentAccessibility::performAction(const platform::AXUIElementRef&, const std::string&) {
  return AXError::apiDisabled;
}

}  // namespace tavelo::qt
