#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Accessibility.h"
#include "platform/linux/accessibility/AccessibilityBus.h"
#include "platform/linux/accessibility/AtspiElement.h"
#include "platform/linux/accessibility/ElementReader.h"
#include "platform/linux/accessibility/FrameSearch.h"

namespace tavelo::linuxdesktop {

/// Menus and what else has titles, children and a press. Main thread.
///
/// Reading children reads their titles and their own children along with them, and keeps both for the turn of
/// the main queue: a search that goes from child to child costs two round trips for each menu.
class MenuAccess final {
 public:
  MenuAccess(FrameSearch& frames, AccessibilityBus& bus) : frames_(frames), bus_(bus), reader_(bus) {}

  /// The menu bar of the process's active window, or of any of its windows; null when there is none.
  std::shared_ptr<AtspiElement> menuBar(platform::ProcessIdentifier process);

  platform::AXError title(const AtspiElement& element, std::string& title);
  platform::AXError children(const AtspiElement& element, std::vector<platform::AXUIElementRef>& children);

  /// Success when the application says that it has done it.
  platform::AXError press(const AtspiElement& element);

 private:
  std::shared_ptr<AtspiElement> menuBarBelow(std::vector<ElementReference> level);

  FrameSearch& frames_;
  AccessibilityBus& bus_;
  ElementReader reader_;
};

}  // namespace tavelo::linuxdesktop
