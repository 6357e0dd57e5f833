#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/x11/keyboard/KeyRole.h"

struct _XDisplay;  // NOLINT(bugprone-reserved-identifier): Xlib's own name.

namespace tavelo::linuxdesktop {

/// The physical key that stands for Fn: the configured one, and what this keyboard has.
struct HoldKey {
  /// The configured name: of a keysym such as "Pause", or of a key such as "RCTL". Empty for Right Control.
  std::string asked;
  /// The key as it is called in messages.
  std::string name = "Right Control";
  /// The same in texts for the user.
  std::string vietnameseName = "Ctrl phải";
  /// False when no key has the configured name; Right Control is used then.
  bool isKnown = true;
  /// Normally one key. None when the keyboard lacks it.
  std::vector<KeyNumber> keys;
};

/// What the keys of the keyboard mean under its current layouts.
struct KeyboardMap {
  /// A key, and a layout group in which it has the wanted meaning.
  struct Place {
    KeyNumber key = 0;
    int group = 0;
  };

  KeyRoles roles{};
  /// The keysym of each key alone, in the first layout; 0 for none.
  std::array<unsigned long, keyNumbers> symbols{};
  HoldKey holdKey;
  int groupCount = 1;
  /// Every key that types v without Shift, group by group.
  std::vector<Place> vPlaces;
  /// The key that is V on a keyboard with Latin letters.
  KeyNumber physicalV = 0;
  /// Absent when the keyboard lacks the key.
  std::optional<KeyNumber> control;
  std::optional<KeyNumber> shift;
  std::optional<KeyNumber> insert;

  /// The key that types v in the group `active`, else in any group.
  std::optional<Place> v(int active) const;
};

/// Reads the map from the X server, in two round trips. `holdKey` is the name of the key that stands for Fn,
/// empty for Right Control. Absent when the server does not answer. Main thread.
std::optional<KeyboardMap> readKeyboardMap(_XDisplay* display, const std::string& holdKey);

}  // namespace tavelo::linuxdesktop
