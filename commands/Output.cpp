#include "commands/Output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "commands/CommandFailure.h"
#include "unicode/Unicode.h"

namespace tavelo {

void print(std::string_view text) {
  if (!tryToPrint(text)) throw CommandFailure(std::string("standard output: ") + std::strerror(errno));
}

bool tryToPrint(std::string_view text) {
  return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
}

std::string onOneLine(std::string_view text) {
  std::string line;
  line.reserve(text.size());
  for (std::size_t offset = 0; offset < text.size();) {
    const char32_t scalar = unicode::nextScalar(text, offset);
    if (scalar == U'\n') {
      line += "⏎";
    } else {
      const bool isControl = scalar < 0x20 || (scalar >= 0x7F && scalar < 0xA0);
      unicode::appendScalar(line, isControl ? unicode::replacementCharacter : scalar);
    }
  }
  return line;
}

}  // namespace tavelo
