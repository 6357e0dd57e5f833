#pragma once

#include <cstdint>

namespace tavelo {

/// What the keyboard asks for.
enum class HotKeyAction : std::uint8_t { startHold, stopHold, toggle };

}  // namespace tavelo
