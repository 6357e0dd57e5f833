#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tavelo {

/// The line of the overlay that shows a running transcript: trimmed, on one line, cut at the front to 72
/// user-perceived characters. A fixed notice when there is nothing to show. Ill-formed UTF-8 reads as U+FFFD.
/// Any thread.
std::string previewText(std::optional<std::string_view> text);

}  // namespace tavelo
