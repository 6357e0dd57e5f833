#include "text/PreviewText.h"

#include <cstddef>

#include "unicode/Unicode.h"

namespace tavelo {
namespace {

constexpr std::size_t longestPreview = 72;

std::string onOneLine(std::string_view text) {
  std::string line;
  line.reserve(text.size());
  bool inWhiteSpace = false;
  for (std::size_t offset = 0; offset < text.size();) {
    const char32_t scalar = unicode::nextScalar(text, offset);
    const bool white = unicode::isWhiteSpace(scalar);
    if (!white) {
      unicode::appendScalar(line, scalar);
    } else if (!inWhiteSpace) {
      line += ' ';
    }
    inWhiteSpace = white;
  }
  return line;
}

}  // namespace

std::string previewText(std::optional<std::string_view> text) {
  const std::string line = onOneLine(unicode::trimmed(text.value_or("")));
  if (line.empty()) return "Đang tạo text...";
  const std::string_view end = unicode::lastCharacters(line, longestPreview);
  return end.size() == line.size() ? line : std::string("...").append(end);
}

}  // namespace tavelo
