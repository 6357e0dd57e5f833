#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Accessibility.h"
#include "platform/linux/accessibility/AccessibilityBus.h"
#include "platform/linux/accessibility/AtspiElement.h"
#include "platform/linux/accessibility/ElementReader.h"
#include "platform/linux/accessibility/FrameSearch.h"
#include "platform/linux/accessibility/Result.h"

namespace tavelo::linuxdesktop {

/// Menus and other elements that have titles and children and can be pressed. Main thread.
///
/// Reading an element's children also reads their titles and their own children, and keeps both for this turn
/// of the main queue. So a search from child to child costs two round trips for each menu.
class MenuAccess final {
 public:
  MenuAccess(FrameSearch& frames, AccessibilityBus& bus) : frames_(frames), bus_(bus), reader_(bus) {}

  /// The menu bar of the process's active window, or else of any of its windows; null if there is none.
  std::shared_ptr<AtspiElement> menuBar(platform::ProcessIdentifier process);

  /// Trimmed.
  Result<std::string> title(const AtspiElement& element);
  /// Fails once the turn has used up its time.
  Result<std::vector<platform::AXUIElementRef>> children(const AtspiElement& element);

  /// `success` if the application says that it has done it.
  platform::AXError press(const AtspiElement& element);

 private:
  std::shared_ptr<AtspiElement> menuBarBelow(std::vector<ElementReference> level);

  FrameSearch& frames_;
  AccessibilityBus& bus_;
  ElementReader reader_;
};

}  // namespace tavelo::linuxdesktop
