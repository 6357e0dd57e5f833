#pragma once

#include <string>
#include <string_view>

namespace tavelo::recognition {

/// What an engine says, made fit for a text field: well-formed, control characters and the two line
/// separators as spaces (a shell would run a line), trimmed, in the composed form (NFC). Any thread.
std::string cleaned(std::string_view text);

}  // namespace tavelo::recognition
