#pragma once

#include <optional>
#include <vector>

#include "platform/linux/session/PasteKeys.h"
#include "platform/linux/x11/XlibConnection.h"
#include "platform/linux/x11/keyboard/HeldKeys.h"
#include "platform/linux/x11/keyboard/KeyboardMap.h"
#include "platform/linux/x11/keyboard/RawKeySource.h"

namespace tavelo::linuxdesktop {

/// Presses the keys that paste, whatever the user holds and whichever layout is active, and leaves the
/// keyboard as the user has it.
///
/// A chord is `press`, `putBack` if `hasReleasedKeys`, `end`. The caller keeps `held` up to date between
/// them. Main thread.
class PasteChord final {
 public:
  /// `connection` must outlive it.
  explicit PasteChord(XlibConnection& connection) : connection_(connection) {}

  /// Presses the chord's modifiers, releases those of the user's that would spoil it, then presses and
  /// releases its key. Does nothing when the keyboard lacks the keys. One round trip.
  void press(PasteKeys keys, const KeyboardMap& map, const HeldKeys& held);

  /// Whether `press` released keys that the user holds.
  bool hasReleasedKeys() const { return !released_.empty(); }

  /// Presses those of them again that the user still holds.
  void putBack(const HeldKeys& held);

  /// Releases the chord's modifiers and switches back to the user's layout.
  void end();

  /// Whether we caused this move. To be called once for every move, in order.
  bool isOwn(const RawKeySource::Event& moved);

  /// The user let go of a key. If `putBack` pressed it again, only we can release it now: the user's release
  /// applies to another keyboard.
  void userReleased(KeyNumber key);

 private:
  struct Posted {
    KeyNumber key = 0;
    bool down = false;
    unsigned long request = 0;
  };

  void move(KeyNumber key, bool down);
  void lockGroup(int group);

  XlibConnection& connection_;
  /// Modifiers that the chord pressed, and keys of the user's that it released.
  std::vector<KeyNumber> pressed_;
  std::vector<KeyNumber> released_;
  /// The layout group to go back to.
  std::optional<int> usersGroup_;
  /// What we posted and have not yet seen come back.
  std::vector<Posted> posted_;
  /// Keys that the user held during a chord and that we pressed again.
  HeldKeys::Keys pressedAgain_;
};

}  // namespace tavelo::linuxdesktop
