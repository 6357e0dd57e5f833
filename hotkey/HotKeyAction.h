#pragma once

#include <cstdint>

namespace tavelo {

/// What the keyboard asks for. `cancelHold` ends a hold as `stopHold` does, and what was said is dropped.
enum class HotKeyAction : std::uint8_t { startHold, stopHold, toggle, cancelHold };

}  // namespace tavelo
