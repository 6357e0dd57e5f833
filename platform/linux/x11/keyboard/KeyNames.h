#pragma once

#include <optional>
#include <string>

namespace tavelo::linuxdesktop {

/// What a Vietnamese user calls the key that bears the keysym; absent for keys that are called by their
/// keysym. Any thread.
std::optional<std::string> vietnameseKeyName(unsigned long symbol);

}  // namespace tavelo::linuxdesktop
