#pragma once

#include <string>

namespace tavelo::platform {

/// What a platform operation reports when it failed and the user should read why.
struct PlatformError {
  /// One sentence in the user's language, without a prefix; UTF-8.
  std::string localizedDescription;
};

}  // namespace tavelo::platform
