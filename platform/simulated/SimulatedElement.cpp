#include "platform/simulated/SimulatedElement.h"

namespace tavelo::simulated {

platform::AXError SimulatedElement::copyAttribute(const std::string&, platform::AXValue&) {
  return platform::AXError::attributeUnsupported;
}

platform::AXError SimulatedElement::setAttribute(const std::string&, const platform::AXValue&) {
  return platform::AXError::attributeUnsupported;
}

platform::AXError SimulatedElement::perform(const std::string&) {
  return platform::AXError::actionUnsupported;
}

}  // namespace tavelo::simulated
