#pragma once

#include "language/Text.h"

/// What commands and errors say, in English and in Vietnamese side by side. Each text stands here once.
///
/// A text that ends without a full stop is a clause; it follows a name and a colon, or a comma.
namespace tavelo::language::texts {

// Files.
inline constexpr Text cannotBeRead{"{0}: cannot be read", "{0}: không đọc được"};

}  // namespace tavelo::language::texts
