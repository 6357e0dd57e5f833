#pragma once

#include <cstdint>
#include <string>

namespace tavelo::platform {

/// What a key does when the user presses it alone, as far as that matters for a hold key.
enum class KeyUse : std::uint8_t {
  /// Nothing, or nothing that anybody would miss.
  free,
  types,
  /// A modifier that people hold all day.
  dailyModifier,
  /// Enter, arrows, Print Screen and the like.
  commands,
  /// Caps Lock and the like: each press has a lasting effect.
  locks,
  /// The keyboard's layout gives it no name.
  unknown,
};

/// A key of this keyboard as a hold key. A plain value.
struct KeyFacts {
  /// What the setting of the hold key must be to name it; empty if nothing can.
  std::string setting;
  /// What texts for the user call it, in Vietnamese.
  std::string name;
  KeyUse use = KeyUse::unknown;
};

}  // namespace tavelo::platform
