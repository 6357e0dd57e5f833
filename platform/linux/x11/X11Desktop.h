#pragma once

#include "platform/OverlaidPasteboard.h"
#include "platform/linux/session/DisplayServer.h"
#include "platform/linux/x11/X11Windows.h"
#include "platform/linux/x11/keyboard/X11KeyboardEvents.h"
#include "platform/linux/x11/pasteboard/X11Pasteboard.h"

namespace tavelo::linuxdesktop {

/// The desktop behind an X server. In a Wayland session it reaches only the applications that still speak
/// X11, and refuses to watch keys, because X clients see only some of them there.
class X11Desktop final : public DisplayServer {
 public:
  /// `holdKey` as in `setHoldKey`.
  explicit X11Desktop(const std::string& holdKey = {}) : keyboardEvents_(windows_, holdKey) {
    keyboardEvents_.onHoldKeyChanged = [this] {
      if (onHoldKeyChanged) onHoldKeyChanged();
    };
    keyboardEvents_.mayPaste = [this] { return !mayPaste || mayPaste(); };
    keyboardEvents_.onPaste = [this] {
      overlaidPasteboard_.prepareForPaste();
      pasteboard_.expectPaste(windows_.activeWindow());
      if (onPaste) onPaste();
    };
    keyboardEvents_.onNoPasteKeys = [this] {
      if (onNoPasteKeys) onNoPasteKeys();
    };
  }

  X11Windows& windows() override { return windows_; }
  X11KeyboardEvents& keyboardEvents() override { return keyboardEvents_; }
  platform::OverlaidPasteboard& pasteboard() override { return overlaidPasteboard_; }
  std::string holdKeyName() const override { return keyboardEvents_.holdKey().vietnameseName; }
  platform::KeyFacts keyFacts(std::int64_t keyCode) const override {
    return keyboardEvents_.keyFacts(keyCode);
  }
  std::vector<WindowIdentifier> applicationWindows() override { return windows_.applicationWindows(); }
  void setHoldKey(const std::string& name) override { keyboardEvents_.setHoldKey(name); }
  bool canWatchKeys() const override { return keyboardEvents_.canWatch(); }
  bool compositorRuns() override { return windows_.compositorRuns(); }
  std::optional<std::string> accessibilityBus() override { return windows_.accessibilityBus(); }

 private:
  X11Windows windows_;
  X11Pasteboard pasteboard_;
  platform::OverlaidPasteboard overlaidPasteboard_{pasteboard_};
  X11KeyboardEvents keyboardEvents_;
};

}  // namespace tavelo::linuxdesktop
