#pragma once

#include <functional>
#include <initializer_list>
#include <string_view>

#include "insertion/AttributeReader.h"
#include "platform/Accessibility.h"
#include "platform/Clock.h"
#include "platform/MainQueue.h"
#include "platform/Workspace.h"

namespace tavelo {

/// Presses an application's Paste menu item, as a user would choose Edit ▸ Paste. Knows the English and the
/// Vietnamese titles and compares them under canonical equivalence. Keeps no state. Main thread only.
class EditMenu final {
 public:
  EditMenu();

  /// Brings `application` to the front and presses its Paste item. Returns true if the item reports that it
  /// was pressed, and false at once, without touching anything, if the application has terminated.
  ///
  /// If the closed menus do not show the item, this opens the Edit menu and runs the main loop for 0.12 s,
  /// nested in this call, so that the application can fill the menu. Anything may happen in that time, so
  /// `isStillWanted` is asked afterwards; if it returns false, nothing is pressed. This object must survive
  /// the nested run. The menu stays open when no item is pressed.
  bool pressPasteMenuItem(platform::RunningApplication& application,
                          const std::function<bool()>& isStillWanted);

 private:
  /// The first direct child of `menuBar` whose whole title is one of `titles`; null if there is none.
  platform::AXUIElementRef findMenuBarItem(std::initializer_list<std::string_view> titles,
                                           const platform::AXUIElementRef& menuBar);

  /// The first element titled like a Paste item, depth first from `element` itself; null if there is none.
  /// `depth` is the depth of `element` below the root of the search, which goes eight levels deep.
  platform::AXUIElementRef findPasteMenuItem(const platform::AXUIElementRef& element, int depth = 0);

  bool press(const platform::AXUIElementRef& element);

  platform::Accessibility& accessibility_;
  platform::MainQueue& mainQueue_;
  platform::Clock& clock_;
  AttributeReader reader_;
};

}  // namespace tavelo
