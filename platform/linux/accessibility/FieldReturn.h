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
#include "platform/linux/session/ActiveWindow.h"

namespace tavelo::linuxdesktop {

/// Brings the user back to the field that a text could not be written into, before the text is pasted.
///
/// Without this, a text ends in whatever has the focus by then: the address bar, the field of another tab, or
/// the window that the user has just switched to. Main thread.
class FieldReturn final {
 public:
  /// All references must outlive this object.
  FieldReturn(AccessibilityBus& bus, ApplicationDirectory& directory, TextAccess& text, ActiveWindow& windows,
              const platform::Clock& clock)
      : bus_(bus), directory_(directory), text_(text), windows_(windows), clock_(clock) {}

  /// A text was, or was not, written into `field`.
  void wrote(const ElementReference& field, bool isDone);

  /// A window of the application was asked to come to the front; `noWindow` if the application has ended. If
  /// the write into a field of the application was refused in this turn of the main queue, the field gets the
  /// focus, with its selection as it was.
  void cameToFront(platform::ProcessIdentifier process, WindowIdentifier window);

  /// Whether the field for the next paste exists but is out of sight, for example in another tab. Then
  /// nothing may be pasted, and `onNowhere` is called once. The answer holds for a second after the
  /// application came to the front, which is longer than a paste takes. If the field shows again, it gets the
  /// focus.
  bool isOutOfSight();

  /// Whether the user has switched to another window since that one came to the front.
  bool isElsewhere();

  /// To be asked when the paste is about to go out. Brings the window to the front again, which takes 150 ms
  /// at most. False if it does not come, of which the user is told, or if the field is out of sight.
  bool mayPaste();

  /// Why a text can be put nowhere.
  enum class Nowhere : std::uint8_t { fieldIsHidden, windowIsLost, passwordHasFocus };

  /// Called once for a text that can be put nowhere.
  std::function<void(Nowhere)> onNowhere;

 private:
  struct Refused {
    ElementReference field;
    std::uint64_t turn;
  };
  /// Where the next paste belongs.
  struct Awaited {
    WindowIdentifier window;
    /// One that is in the window.
    std::optional<ElementReference> field;
    platform::Uptime until;
    bool isTold = false;
  };

  enum class Sight : std::uint8_t { focused, showing, hidden, unknown };

  bool isAwaited() const { return awaited_ && clock_.uptime() < awaited_->until; }
  bool bringBack(WindowIdentifier window);
  void tell(Nowhere why);
  Sight look(const ElementReference& field);
  bool isInHiddenPart(const ElementReference& field, bool claimsFocus);
  void focus(const ElementReference& field);

  AccessibilityBus& bus_;
  ApplicationDirectory& directory_;
  TextAccess& text_;
  ActiveWindow& windows_;
  const platform::Clock& clock_;
  std::optional<Refused> refused_;
  std::optional<Awaited> awaited_;
};

}  // namespace tavelo::linuxdesktop
