#include "unicode/PlainText.h"

#include <cstddef>

#include "unicode/Unicode.h"

namespace tavelo::unicode {
namespace {

/// Whether a terminal or a shell may take the scalar for a command or for the end of a line.
bool isControl(char32_t scalar) {
  constexpr char32_t lineSeparator = 0x2028;
  constexpr char32_t paragraphSeparator = 0x2029;
  return scalar < 0x20 || (scalar >= 0x7F && scalar < 0xA0) || scalar == lineSeparator ||
         scalar == paragraphSeparator;
}

}  // namespace

std::string withoutControls(std::string_view text) {
  std::string plain;
  plain.reserve(text.size());
  for (std::size_t offset = 0; offset < text.size();) {
    const char32_t scalar = nextScalar(text, offset);
    appendScalar(plain, isControl(scalar) ? U' ' : scalar);
  }
  return plain;
}

}  // namespace tavelo::unicode
