#pragma once

#include <optional>
#include <vector>

#include "platform/linux/ApplicationDirectory.h"
#include "platform/linux/ElementReader.h"
#include "platform/linux/ElementReference.h"
#include "platform/linux/X11Windows.h"

namespace tavelo::linux {

/// Finds the element with the keyboard focus, from the active window down. Main thread.
///
/// Asks afresh each time: focus events come from background windows too, and late. This program's own windows
/// have no element.
class FocusSearch final {
 public:
  FocusSearch(X11Windows& windows, ApplicationDirectory& directory, AccessibilityBus& bus)
      : windows_(windows), directory_(directory), bus_(bus), reader_(bus) {}

  /// Absent when nothing has the focus, and when its application does not answer.
  std::optional<ElementReference> focusedElement();

 private:
  struct Found {
    WindowIdentifier window;
    ElementReference element;
  };

  std::optional<ElementReference> activeFrame(WindowIdentifier window);
  std::optional<ElementReference> activeFrameTitled(const QString& title);
  std::vector<ElementReference> activeFrames(const std::vector<QString>& services);
  std::optional<ElementReference> focusedBelow(const ElementReference& frame);
  bool isShowing(const ElementReference& element);

  X11Windows& windows_;
  ApplicationDirectory& directory_;
  AccessibilityBus& bus_;
  ElementReader reader_;
  std::optional<Found> last_;
};

}  // namespace tavelo::linux
