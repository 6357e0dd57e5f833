#pragma once

#include <string>

namespace tavelo::language {

/// What the system says of an error number, in the current language, as a clause. In English it is
/// `strerror`. Any thread.
std::string systemError(int number);

/// The same for a failure that a library tells in the system's English words; the words themselves if they
/// are not known.
std::string systemError(const std::string& englishWords);

}  // namespace tavelo::language
