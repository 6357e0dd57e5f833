#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

/// What the commands read and print.
namespace tavelo {

/// Why a command failed: one line for standard error.
class CommandFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Opens something in the place of a standard stream that is closed, so that no file or pipe of the program
/// takes its number. Reading and writing such a stream still fail. Call it before anything is opened.
void keepStandardStreams();

/// The whole content of a file, or of standard input for "-". Throws a `CommandFailure` that names the file
/// if it cannot be read.
std::string readInput(const std::string& file);

/// Writes to standard output. Throws a `CommandFailure` if that fails.
void print(std::string_view text);

/// The same, but returns false if it fails.
bool tryToPrint(std::string_view text);

/// `text` on one line, safe to print on a terminal: a line break becomes "⏎"; any other control character,
/// line separator or bidirectional control becomes U+FFFD. Use it for whatever comes from a dictation, a
/// story or another program.
std::string onOneLine(std::string_view text);

}  // namespace tavelo
