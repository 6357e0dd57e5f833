#pragma once

#include <cstdlib>
#include <string>

namespace tavelo::platform {

/// An environment variable; empty if it is unset or empty. Any thread, as long as no other thread sets
/// variables.
inline std::string environmentVariable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

}  // namespace tavelo::platform
