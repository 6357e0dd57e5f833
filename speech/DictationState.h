#pragma once

#include <cstdint>

namespace tavelo {

/// Whether a dictation is running.
enum class DictationState : std::uint8_t { idle = 0, listening = 1 };

}  // namespace tavelo
