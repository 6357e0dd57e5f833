#pragma once

#include <optional>
#include <string>

#include "platform/KeyboardEvents.h"
#include "platform/Pasteboard.h"
#include "platform/linux/session/ActiveWindow.h"

namespace tavelo::linuxdesktop {

/// Everything that depends on what draws the desktop: windows, keyboard, clipboard. The wiring picks one when
/// the program starts. Owns what it hands out. Main thread, with an application object.
class DisplayServer {
 public:
  virtual ~DisplayServer() = default;

  virtual ActiveWindow& windows() = 0;
  virtual platform::KeyboardEvents& keyboardEvents() = 0;
  virtual platform::Pasteboard& pasteboard() = 0;

  /// Whether every key of the desktop can be seen, whichever window has the focus.
  virtual bool canWatchKeys() const = 0;

  /// The address of the accessibility bus that the display server names; absent if it names none.
  virtual std::optional<std::string> accessibilityBus() { return std::nullopt; }

  /// Whether a compositor runs, so that windows may be translucent.
  virtual bool compositorRuns() = 0;
};

}  // namespace tavelo::linuxdesktop
