#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tavelo {

/// The running transcript as the overlay shows it: trimmed, on one line, only the last 72 user-perceived
/// characters. A fixed notice if there is nothing to show. Ill-formed UTF-8 reads as U+FFFD. Any thread.
std::string previewText(std::optional<std::string_view> text);

}  // namespace tavelo
