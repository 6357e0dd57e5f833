#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/KeyFacts.h"
#include "platform/KeyboardEvents.h"
#include "platform/OverlaidPasteboard.h"
#include "platform/linux/session/ActiveWindow.h"

namespace tavelo::linuxdesktop {

/// Everything that depends on what draws the desktop: windows, keyboard, clipboard. The wiring picks one when
/// the program starts. Owns what it hands out. Main thread, with an application object.
class DisplayServer {
 public:
  virtual ~DisplayServer() = default;

  virtual ActiveWindow& windows() = 0;
  virtual platform::KeyboardEvents& keyboardEvents() = 0;
  /// The clipboard, on which dictated text only lies over the user's contents.
  virtual platform::OverlaidPasteboard& pasteboard() = 0;

  /// The hold key as texts for the user call it, in Vietnamese.
  virtual std::string holdKeyName() const = 0;

  /// The key that events with this code are about, as a hold key.
  virtual platform::KeyFacts keyFacts(std::int64_t keyCode) const = 0;

  /// The windows of applications, the topmost first; no panels, and not the desktop's own.
  virtual std::vector<WindowIdentifier> applicationWindows() = 0;

  /// Has another key be the hold key, by the name that the user set; empty for the usual one. It is the hold
  /// key once no key is down.
  virtual void setHoldKey(const std::string& name) = 0;

  /// Called when another key is the hold key.
  std::function<void()> onHoldKeyChanged;

  /// Whether every key of the desktop can be seen, whichever window has the focus.
  virtual bool canWatchKeys() const = 0;

  /// The address of the accessibility bus that the display server names; absent if it names none.
  virtual std::optional<std::string> accessibilityBus() { return std::nullopt; }

  /// Whether a compositor runs, so that windows may be translucent.
  virtual bool compositorRuns() = 0;

  /// Called when a text is to be pasted into an application that pastes with no keys. The text is on the
  /// clipboard.
  std::function<void()> onNoPasteKeys;

  /// Called right before a paste goes out, with the text on the clipboard.
  std::function<void()> onPaste;

  /// Asked before a paste goes out; if it says no, nothing is posted. Not asked while it is empty.
  std::function<bool()> mayPaste;
};

}  // namespace tavelo::linuxdesktop
