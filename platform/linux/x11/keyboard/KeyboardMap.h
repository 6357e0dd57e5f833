#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/x11/keyboard/KeyRole.h"

struct _XDisplay;  // NOLINT(bugprone-reserved-identifier): Xlib calls it so.

namespace tavelo::linuxdesktop {

/// The physical key that stands for Fn: which one was asked for, and what this keyboard has of it.
struct HoldKey {
  /// A keysym's name such as "Pause", or a key's such as "RCTL"; empty for the usual one.
  std::string asked;
  /// The key in words, for example "Right Control".
  std::string name = "Right Control";
  /// False when no key is called as asked: the usual one is taken.
  bool isKnown = true;
  /// The keys of this keyboard that are it; normally one, none where the keyboard lacks it.
  std::vector<KeyNumber> keys;
};

/// What the keys of the keyboard mean under its present layout; plain data.
struct KeyboardMap {
  /// A key, and the layout group in which it bears what was looked for.
  struct Place {
    KeyNumber key = 0;
    int group = 0;
  };

  KeyRoles roles{};
  HoldKey holdKey;
  int groupCount = 1;
  /// Each key that bears v unshifted, in every group.
  std::vector<Place> vPlaces;
  /// The key where V is on a keyboard with the Latin alphabet.
  KeyNumber physicalV = 0;
  /// Absent where the keyboard lacks the key.
  std::optional<KeyNumber> control;
  std::optional<KeyNumber> shift;
  std::optional<KeyNumber> insert;

  /// The key that bears v in group `active`, else in any group.
  std::optional<Place> v(int active) const;
};

/// Asks the X server, in two round trips. `holdKey` is the name of the key that stands for Fn, empty for
/// Right Control. Absent when the server does not tell. Main thread.
std::optional<KeyboardMap> readKeyboardMap(_XDisplay* display, const std::string& holdKey);

}  // namespace tavelo::linuxdesktop
