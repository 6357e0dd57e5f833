#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace tavelo::linuxdesktop {

/// The X key code of a key.
using KeyNumber = std::uint8_t;
inline constexpr std::size_t keyNumbers = 256;

/// What a key counts as in keyboard events.
struct KeyRole {
  /// One of `platform::keycodes`, or a number that stands for no key there.
  std::int64_t keyCode = 0;
  /// The bit of `platform::keyflags` that is set while the key is down.
  std::uint64_t flag = 0;
  /// Its moves are reported as flags-changed.
  bool isModifier = false;
  /// While it is down it changes what other keys mean, and releasing and pressing it again has no other
  /// effect.
  bool altersOthers = false;
};

using KeyRoles = std::array<KeyRole, keyNumbers>;

}  // namespace tavelo::linuxdesktop
