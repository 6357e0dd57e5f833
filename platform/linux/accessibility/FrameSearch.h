#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "platform/linux/accessibility/ApplicationDirectory.h"
#include "platform/linux/accessibility/ElementReader.h"
#include "platform/linux/accessibility/ElementReference.h"
#include "platform/linux/session/ActiveWindow.h"

namespace tavelo::linuxdesktop {

/// Finds windows of the X server on the accessibility bus. Main thread.
///
/// By process; but in a sandbox a process has another number, and a helper stands on the bus for it. Then the
/// active window is known by its title.
class FrameSearch final {
 public:
  FrameSearch(ActiveWindow& windows, ApplicationDirectory& directory, AccessibilityBus& bus)
      : windows_(windows), directory_(directory), reader_(bus) {}

  /// The element of the active window; absent when it is not on the bus, or one of this program's own.
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
