#include "recognizer/CleanText.h"

#include "unicode/Unicode.h"

namespace tavelo::recognition {
namespace {

/// Whether a terminal or a shell may take the scalar for a command or for the end of a line.
bool isControl(char32_t scalar) {
  constexpr char32_t lineSeparator = 0x2028;
  constexpr char32_t paragraphSeparator = 0x2029;
  return scalar < 0x20 || (scalar >= 0x7F && scalar < 0xA0) || scalar == lineSeparator ||
         scalar == paragraphSeparator;
}

}  // namespace

std::string cleaned(std::string_view text) {
  std::string plain;
  plain.reserve(text.size());
  for (std::size_t offset = 0; offset < text.size();) {
    const char32_t scalar = unicode::nextScalar(text, offset);
    unicode::appendScalar(plain, isControl(scalar) ? U' ' : scalar);
  }
  return unicode::inComposedForm(unicode::trimmed(plain));
}

}  // namespace tavelo::recognition
