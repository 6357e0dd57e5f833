#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/Time.h"
#include "platform/simulated/SimulatedElement.h"
#include "platform/simulated/SimulatedMenuItem.h"

namespace tavelo::simulated {

class World;

/// When accessibility can see the items of a menu.
struct MenuVisibility {
  bool whileClosed = true;
  /// How long after the menu opens the items appear, if they are hidden while it is closed.
  platform::Seconds builtAfter{0};
};

enum class MenuLanguage : std::uint8_t { english, vietnamese, german };

/// The menu bar of an application, made by `SimulatedApplication::addMenuBar`. Main thread.
class SimulatedMenuBar final : public SimulatedElement,
                               public std::enable_shared_from_this<SimulatedMenuBar> {
 public:
  SimulatedMenuBar(World& world, SimulatedApplication& application);

  /// Adds a menu at the end of the bar. The reference stays valid.
  SimulatedMenuItem& add(std::optional<std::string> title);

  /// Adds File, Edit and Help menus. The Edit menu has a plain Paste item, followed by one that pastes
  /// without style.
  void addStandardMenus(MenuLanguage language);

  void setVisibility(const MenuVisibility& visibility) { visibility_ = visibility; }

  /// The open menu; null if none is open.
  const SimulatedMenuItem* openMenu() const { return open_; }

  /// Closes the open menu without choosing an item.
  void close();

  /// The titles of the items pressed so far; opening a menu does not count.
  const std::vector<std::string>& presses() const { return presses_; }

  SimulatedApplication& application() const { return application_; }
  SimulatedApplication* respondent() const override { return &application_; }
  bool exists() const override { return true; }
  std::string description() const override;
  platform::AXError copyAttribute(const std::string& attribute, platform::AXValue& value) override;

 private:
  friend class SimulatedMenuItem;
  bool showsItemsOf(const SimulatedMenuItem& menu) const;
  void open(SimulatedMenuItem& menu);
  void choose(const SimulatedMenuItem& item, MenuRole role);

  World& world_;
  SimulatedApplication& application_;
  MenuVisibility visibility_;
  std::vector<std::shared_ptr<SimulatedMenuItem>> menus_;
  SimulatedMenuItem* open_ = nullptr;
  platform::Uptime openedAt_{};
  std::vector<std::string> presses_;
};

}  // namespace tavelo::simulated
