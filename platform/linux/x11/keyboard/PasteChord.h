#pragma once

#include <vector>

#include "platform/linux/session/PasteKeys.h"
#include "platform/linux/x11/keyboard/HeldKeys.h"
#include "platform/linux/x11/keyboard/KeyboardMap.h"
#include "platform/linux/x11/keyboard/RawKeySource.h"
#include "platform/linux/x11/keyboard/XlibConnection.h"

namespace tavelo::linuxdesktop {

/// Presses the keys that paste, whatever the user holds and whichever layout is active, and leaves the
/// keyboard as the user has it. Main thread.
class PasteChord final {
 public:
  /// All must outlive it. `source` delivers its moves to `isOwn` first.
  PasteChord(XlibConnection& connection, RawKeySource& source, const HeldKeys& held);

  /// Presses and releases the keys now; two round trips. Nothing is reported.
  void press(PasteKeys keys, const KeyboardMap& map);

  /// Whether the key moved because we moved it; each move is asked about once, in order. A key that we
  /// pressed again in the user's stead is let go with the user's.
  bool isOwn(const RawKeySource::Move& move);

 private:
  struct Posted {
    KeyNumber key = 0;
    bool down = false;
    unsigned long request = 0;
  };

  void move(KeyNumber key, bool down);
  void pressAndReleaseWith(KeyNumber key, const std::vector<KeyNumber>& modifiers, int group);
  void putBack(const std::vector<KeyNumber>& keys);
  std::vector<KeyNumber> heldKeysToRelease(const std::vector<KeyNumber>& needed, KeyNumber key) const;

  XlibConnection& connection_;
  RawKeySource& source_;
  const HeldKeys& held_;
  /// What we posted and have not seen come back.
  std::vector<Posted> posted_;
  /// Keys that the user held during a chord and that we pressed again.
  HeldKeys::Keys pressedAgain_;
};

}  // namespace tavelo::linuxdesktop
