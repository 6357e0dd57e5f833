#pragma once

#include <string>

namespace tavelo::platform {

/// Why an operation failed, for the user to read.
struct PlatformError {
  /// One sentence in the user's language, in UTF-8, without a prefix.
  std::string localizedDescription;
};

}  // namespace tavelo::platform
