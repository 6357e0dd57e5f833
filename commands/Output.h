#pragma once

#include <string>
#include <string_view>

namespace tavelo {

/// Writes to standard output. Throws a `CommandFailure` when that does not take it.
void print(std::string_view text);

/// The same; false when standard output did not take it.
bool tryToPrint(std::string_view text);

/// `text` on one line for a terminal: line breaks as "⏎", other control characters as U+FFFD, so that what
/// somebody dictated or a story holds cannot steer the terminal.
std::string onOneLine(std::string_view text);

}  // namespace tavelo
