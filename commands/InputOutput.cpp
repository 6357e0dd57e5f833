#include "commands/InputOutput.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>

#include <fcntl.h>
#include <unistd.h>

#include "language/Language.h"
#include "language/SystemErrors.h"
#include "language/Texts.h"
#include "unicode/Unicode.h"

namespace tavelo {
namespace {

using language::say;
namespace words = language::words;

struct CloseFile {
  void operator()(std::FILE* file) const {
    if (file != stdin) std::fclose(file);
  }
};

/// Whether the scalar makes a terminal show other text than what follows: it moves the cursor, or it changes
/// the direction of the writing.
bool controlsTerminal(char32_t scalar) {
  const auto isBetween = [scalar](char32_t first, char32_t last) {
    return first <= scalar && scalar <= last;
  };
  constexpr char32_t arabicLetterMark = 0x061C;
  return scalar < 0x20 || isBetween(0x7F, 0x9F) || scalar == arabicLetterMark || isBetween(0x200E, 0x200F) ||
         isBetween(0x2028, 0x202E) || isBetween(0x2066, 0x2069);
}

}  // namespace

void keepStandardStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    // The lowest number that is free is this one, since those below are taken.
    if (::fcntl(stream, F_GETFD) < 0) ::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
  }
}

std::string readInput(const std::string& file) {
  const std::unique_ptr<std::FILE, CloseFile> input(file == "-" ? stdin : std::fopen(file.c_str(), "rb"));
  if (!input) throw CommandFailure(file + ": " + language::systemError(errno));
  std::string content;
  std::array<char, 65536> chunk{};
  while (const std::size_t read = std::fread(chunk.data(), 1, chunk.size(), input.get())) {
    content.append(chunk.data(), read);
  }
  if (std::ferror(input.get()) != 0) throw CommandFailure(file + ": " + language::systemError(errno));
  return content;
}

void print(std::string_view text) {
  if (!tryToPrint(text)) throw CommandFailure(say(words::standardOutput, {language::systemError(errno)}));
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
      unicode::appendScalar(line, controlsTerminal(scalar) ? unicode::replacementCharacter : scalar);
    }
  }
  return line;
}

}  // namespace tavelo
