#pragma once

#include <string>

namespace tavelo::platform {

/// What the desktop's system and keys are called in texts for the user, UTF-8. The defaults are macOS's, as
/// are the names of the operations.
struct Names {
  std::string system = "macOS";
  /// The same as the first word of a sentence.
  std::string systemAtStart = "macOS";
  std::string computer = "MacBook";
  std::string holdKey = "Fn";
  std::string fallbackKeys = "Control Option V";
};

}  // namespace tavelo::platform
