#pragma once

#include <cstdint>

#include "platform/linux/session/ActiveWindow.h"

namespace tavelo::linuxdesktop {

/// Which keys paste the clipboard in an application.
enum class PasteKeys : std::uint8_t {
  controlV,
  controlShiftV,
  /// No keys do, and Control-V would do something else.
  none,
};

/// By the class of the application's window: terminals leave Control-V to what runs in them.
PasteKeys pasteKeys(const WindowClass& window);

}  // namespace tavelo::linuxdesktop
