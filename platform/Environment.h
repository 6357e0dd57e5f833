#pragma once

#include <cstdlib>
#include <string>

namespace tavelo::platform {

/// A variable of the environment; empty when it is unset or empty. Any thread, as long as nobody sets one.
inline std::string environmentVariable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

}  // namespace tavelo::platform
