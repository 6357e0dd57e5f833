#pragma once

#include <string>
#include <string_view>

namespace tavelo::unicode {

/// The text with a space for each control character and line or paragraph separator. It may end up in a
/// terminal, where a shell runs a line as soon as it ends. Any thread.
std::string withoutControls(std::string_view text);

}  // namespace tavelo::unicode
