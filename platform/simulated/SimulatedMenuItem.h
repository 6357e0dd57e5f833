#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/simulated/SimulatedElement.h"

namespace tavelo::simulated {

class SimulatedMenuBar;

/// What a menu item does when it is pressed.
enum class MenuRole : std::uint8_t { nothing, paste };

/// A top-level menu, a submenu or an item. Lives as long as its application. Main thread.
class SimulatedMenuItem final : public SimulatedElement,
                                public std::enable_shared_from_this<SimulatedMenuItem> {
 public:
  /// `menu` is the top-level menu that contains the item; null if this is one.
  SimulatedMenuItem(SimulatedMenuBar& bar, SimulatedMenuItem* menu, std::optional<std::string> title,
                    MenuRole role);

  /// Adds a child after the others; without `title` it has no title attribute. The reference stays valid.
  SimulatedMenuItem& add(std::optional<std::string> title, MenuRole role = MenuRole::nothing);

  /// A press of a disabled item fails.
  void setEnabled(bool enabled) { enabled_ = enabled; }

  /// The title; empty if there is none.
  std::string title() const { return title_.value_or(""); }

  SimulatedApplication* respondent() const override;
  bool exists() const override;
  std::string description() const override;
  platform::AXError copyAttribute(const std::string& attribute, platform::AXValue& value) override;
  platform::AXError perform(const std::string& action) override;

 private:
  SimulatedMenuBar& bar_;
  SimulatedMenuItem* const menu_;
  const std::optional<std::string> title_;
  const MenuRole role_;
  bool enabled_ = true;
  std::vector<std::shared_ptr<SimulatedMenuItem>> children_;
};

}  // namespace tavelo::simulated
