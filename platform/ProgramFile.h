#pragma once

#include <cstdint>

namespace tavelo::platform {

/// What became of the file that this program was started from.
enum class ProgramFile : std::uint8_t {
  unchanged,
  /// Another file has its place: the program was upgraded, or installed anew.
  replaced,
  removed,
};

}  // namespace tavelo::platform
