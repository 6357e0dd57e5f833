#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/KeyboardEvents.h"

namespace tavelo::simulated {

/// Keys that a person moves on the simulated keyboard; the values are virtual key codes. Any other code can
/// be cast to it.
enum class Key : std::int64_t {
  a = 0,
  c = 8,
  v = platform::keycodes::v,
  returnKey = 36,
  space = 49,
  command = 55,
  shift = 56,
  option = 58,
  control = 59,
  function = platform::keycodes::function,
};

/// The flag of a modifier key; 0 for any other.
std::uint64_t flagOf(Key key);

/// The key after the modifiers in `flags`, for example "Control-Option-V". A modifier key is named without
/// other modifiers, an unnamed key as "key 40".
std::string chordName(Key key, std::uint64_t flags);

/// The keys of a chord in lower case, such as "fn" or "control-option-v", in that order; absent if one is
/// unknown.
std::optional<std::vector<Key>> parseChord(std::string_view chord);

}  // namespace tavelo::simulated
