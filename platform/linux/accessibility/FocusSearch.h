#pragma once

#include <QElapsedTimer>
#include <optional>

#include "platform/linux/accessibility/AccessibilityBus.h"
#include "platform/linux/accessibility/AtspiMessages.h"
#include "platform/linux/accessibility/ElementReader.h"
#include "platform/linux/accessibility/FrameSearch.h"
#include "platform/linux/session/ActiveWindow.h"

namespace tavelo::linuxdesktop {

/// Finds the element with the keyboard focus, from the active window down. Main thread.
///
/// Asks each time instead of following focus events, which also come from background windows, and late. This
/// program's own windows have no element here; see `OwnField`.
class FocusSearch final {
 public:
  FocusSearch(ActiveWindow& windows, FrameSearch& frames, AccessibilityBus& bus)
      : windows_(windows), frames_(frames), bus_(bus), reader_(bus) {}

  /// Absent if nothing has the focus or its application does not answer.
  std::optional<ElementReference> focusedElement();

  /// Whether the focus is in a password field. Takes the outcome of a search that was made less than 100 ms
  /// ago, since a dictation begins with one.
  bool passwordHasFocus();

 private:
  struct Found {
    WindowIdentifier window;
    ElementReference element;
    bool isPassword = false;
  };

  std::optional<Found> search();
  std::optional<Found> focusedBelow(WindowIdentifier window, const ElementReference& frame);
  bool isShowing(const ElementReference& element);

  ActiveWindow& windows_;
  FrameSearch& frames_;
  AccessibilityBus& bus_;
  ElementReader reader_;
  std::optional<Found> last_;
  bool passwordHasFocus_ = false;
  QElapsedTimer sinceSearch_;
};

}  // namespace tavelo::linuxdesktop
