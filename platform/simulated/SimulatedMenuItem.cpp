#include "platform/simulated/SimulatedMenuItem.h"

#include <utility>

#include "platform/simulated/SimulatedApplication.h"
#include "platform/simulated/SimulatedMenuBar.h"
#include "unicode/Unicode.h"

namespace tavelo::simulated {

using platform::AXError;

SimulatedMenuItem::SimulatedMenuItem(SimulatedMenuBar& bar, SimulatedMenuItem* menu,
                                     std::optional<std::string> title, MenuRole role)
    : bar_(bar), menu_(menu), title_(std::move(title)), role_(role) {}

SimulatedMenuItem& SimulatedMenuItem::add(std::optional<std::string> title, MenuRole role) {
  SimulatedMenuItem* menu = menu_ == nullptr ? this : menu_;
  return *children_.emplace_back(std::make_shared<SimulatedMenuItem>(bar_, menu, std::move(title), role));
}

SimulatedApplication* SimulatedMenuItem::respondent() const { return &bar_.application(); }

bool SimulatedMenuItem::exists() const { return menu_ == nullptr || bar_.showsItemsOf(*menu_); }

std::string SimulatedMenuItem::description() const {
  return bar_.application().description() + "/" + title_.value_or("untitled menu item");
}

AXError SimulatedMenuItem::copyAttribute(const std::string& attribute, platform::AXValue& value) {
  if (attribute == platform::ax::title) {
    if (!title_) return AXError::noValue;
    value = std::string{unicode::trimmed(*title_)};
    return AXError::success;
  }
  if (attribute == platform::ax::children) {
    const bool shown = menu_ != nullptr || bar_.showsItemsOf(*this);
    std::vector<platform::AXUIElementRef> children;
    if (shown) children.assign(children_.begin(), children_.end());
    value = std::move(children);
    return AXError::success;
  }
  return AXError::attributeUnsupported;
}

AXError SimulatedMenuItem::perform(const std::string& action) {
  if (action != platform::ax::press) return AXError::actionUnsupported;
  if (!enabled_) return AXError::failure;
  if (menu_ == nullptr) {
    bar_.open(*this);
  } else if (children_.empty()) {
    bar_.choose(*this, role_);
  }
  return AXError::success;
}

}  // namespace tavelo::simulated
