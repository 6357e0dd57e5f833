#pragma once

#include <string>

namespace tavelo {

/// The whole content of a file, of standard input for "-". Throws a `CommandFailure` that names it when it
/// cannot be read.
std::string readInput(const std::string& file);

}  // namespace tavelo
