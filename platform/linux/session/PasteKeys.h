#pragma once

#include <cstdint>

#include "platform/linux/session/ActiveWindow.h"

namespace tavelo::linuxdesktop {

/// Which keys paste the clipboard in an application.
enum class PasteKeys : std::uint8_t {
  controlV,
  controlShiftV,
  shiftInsert,
  /// No keys paste, and Control-V would do something else.
  none,
};

/// Decides by the class of the application's window. Most applications paste with Control-V.
PasteKeys pasteKeys(const WindowClass& window);

}  // namespace tavelo::linuxdesktop
