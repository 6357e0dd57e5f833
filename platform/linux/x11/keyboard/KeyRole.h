#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace tavelo::linuxdesktop {

/// A key by its X key code.
using KeyNumber = std::uint8_t;
inline constexpr std::size_t keyNumbers = 256;

/// What a key counts as in keyboard events.
struct KeyRole {
  /// One of `platform::keycodes`, or a number that is none of them.
  std::int64_t keyCode = 0;
  /// The bit of `platform::keyflags` that it sets while it is down.
  std::uint64_t flag = 0;
  /// Its moves are reported as flags-changed.
  bool isModifier = false;
  /// While it is down it changes what other keys mean; letting it go and pressing it again does nothing else.
  bool altersOthers = false;
};

using KeyRoles = std::array<KeyRole, keyNumbers>;

}  // namespace tavelo::linuxdesktop
