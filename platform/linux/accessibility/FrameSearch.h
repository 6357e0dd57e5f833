#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "platform/linux/accessibility/ApplicationDirectory.h"
#include "platform/linux/accessibility/AtspiMessages.h"
#include "platform/linux/accessibility/ElementReader.h"
#include "platform/linux/session/ActiveWindow.h"

namespace tavelo::linuxdesktop {

/// Finds the display server's windows on the accessibility bus. Main thread.
///
/// It looks for the window's process. In a sandbox the process has another number, and a helper process is on
/// the bus in its place; then it looks for the active window's title.
class FrameSearch final {
 public:
  FrameSearch(ActiveWindow& windows, ApplicationDirectory& directory, AccessibilityBus& bus)
      : windows_(windows), directory_(directory), reader_(bus) {}

  /// The element of the active window; absent if it is not on the bus or is one of this program's own.
  std::optional<ElementReference> activeFrame(WindowIdentifier activeWindow);

  /// All windows of a process, the active one first.
  std::vector<ElementReference> framesOf(platform::ProcessIdentifier process);

 private:
  struct Frames {
    std::vector<ElementReference> active;
    std::vector<ElementReference> others;
  };
  Frames frames(const std::vector<QString>& services);
  std::optional<ElementReference> activeFrameTitled(const QString& title);

  ActiveWindow& windows_;
  ApplicationDirectory& directory_;
  ElementReader reader_;
};

}  // namespace tavelo::linuxdesktop
