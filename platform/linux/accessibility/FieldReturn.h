#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "platform/Clock.h"
#include "platform/Time.h"
#include "platform/Workspace.h"
#include "platform/linux/accessibility/AccessibilityBus.h"
#include "platform/linux/accessibility/ApplicationDirectory.h"
#include "platform/linux/accessibility/AtspiMessages.h"
#include "platform/linux/accessibility/TextAccess.h"

namespace tavelo::linuxdesktop {

/// Brings the user back to the field that a text could not be written into, before the text is pasted.
///
/// Without this, a text ends in whatever has the focus by then: the address bar, or the field of another tab.
/// Main thread.
class FieldReturn final {
 public:
  /// All references must outlive this object.
  FieldReturn(AccessibilityBus& bus, ApplicationDirectory& directory, TextAccess& text,
              const platform::Clock& clock)
      : bus_(bus), directory_(directory), text_(text), clock_(clock) {}

  /// A text was, or was not, written into `field`.
  void wrote(const ElementReference& field, bool isDone);

  /// The application was asked to come to the front. If the write into a field of it was refused in this turn
  /// of the main queue, the field gets the focus, with its selection as it was.
  void cameToFront(platform::ProcessIdentifier process);

  /// Whether the field for the next paste exists but is out of sight, for example in another tab. Then
  /// nothing may be pasted, and `onOutOfSight` is called once. The answer holds for a second after the
  /// application came to the front, which is longer than a paste takes. If the field shows again, it gets the
  /// focus.
  bool isOutOfSight();

  /// Called when a text can be put nowhere, because its field is out of sight.
  std::function<void()> onOutOfSight;

 private:
  struct Refused {
    ElementReference field;
    std::uint64_t turn;
  };
  struct Awaited {
    ElementReference field;
    platform::Uptime until;
    bool isTold = false;
  };

  enum class Sight : std::uint8_t { focused, showing, hidden, unknown };

  Sight look(const ElementReference& field);
  void focus(const ElementReference& field);

  AccessibilityBus& bus_;
  ApplicationDirectory& directory_;
  TextAccess& text_;
  const platform::Clock& clock_;
  std::optional<Refused> refused_;
  std::optional<Awaited> awaited_;
};

}  // namespace tavelo::linuxdesktop
