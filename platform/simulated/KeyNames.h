#pragma once

#include <cstdint>
#include <string>

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

/// For example "Fn" or "V"; "key 40" for a key without a name here.
std::string nameOf(Key key);

/// The key with the modifiers of `flags` before it, for example "Control-Option-V"; a modifier alone for
/// itself.
std::string chordName(Key key, std::uint64_t flags);

}  // namespace tavelo::simulated
