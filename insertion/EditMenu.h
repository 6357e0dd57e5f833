#pragma once

#include <string_view>
#include <vector>

#include "insertion/AttributeReader.h"
#include "platform/Accessibility.h"
#include "platform/Clock.h"
#include "platform/MainQueue.h"
#include "platform/Workspace.h"

namespace tavelo {

/// Presses an application's Paste menu item, as a person would pick Edit ▸ Paste; knows the English and the
/// Vietnamese titles. Titles are compared under canonical equivalence. Keeps no state. Main thread only.
class EditMenu final {
 public:
  EditMenu();

  /// Brings `application` to the front and presses its Paste item; true when the item reports that it was
  /// pressed.
  ///
  /// When the closed menus do not show the item, opens the Edit menu and runs the main loop for 0.12 s,
  /// nested in this call, so that the application can fill it. A menu in which no Paste item turns up stays
  /// open. False at once, and nothing touched, when the application has terminated.
  bool pressPasteMenuItem(platform::RunningApplication& application);

  /// The first direct child of `menuBar` whose whole title is one of `titles`; null when none is.
  platform::AXUIElementRef findMenuBarItem(const std::vector<std::string_view>& titles,
                                           const platform::AXUIElementRef& menuBar);

  /// The first element, depth first from `element` itself, that is titled like a Paste item; null when none
  /// is found. `depth` is how deep `element` lies below the search's root; depths of 8 and more are not
  /// looked at.
  platform::AXUIElementRef findPasteMenuItem(const platform::AXUIElementRef& element, int depth);

 private:
  bool press(const platform::AXUIElementRef& element);

  platform::Accessibility& accessibility_;
  platform::MainQueue& mainQueue_;
  platform::Clock& clock_;
  AttributeReader reader_;
};

}  // namespace tavelo
