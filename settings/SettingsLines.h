#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The text of a settings file: lines `NAME=value`. A value may stand in single or double quotes, in which
/// nothing has a special meaning. A comment begins with # or ;, at the beginning of a line or after a blank.
namespace tavelo::settings {

/// Names and their values.
using Values = std::map<std::string, std::string>;

/// One line of the file. A plain value.
struct Line {
  enum class Kind : std::uint8_t { empty, setting, damaged };

  Kind kind = Kind::empty;
  std::string name;
  std::string value;
  /// Where the value stands in the line, with its quotes.
  std::size_t valueBegins = 0;
  std::size_t valueEnds = 0;

  /// `text` is the line without its line feed. A carriage return at its end does not belong to the value.
  static Line read(std::string_view text);
};

/// What a whole file says. A plain value.
struct Content {
  /// Of several lines with one name, the last counts.
  Values values;
  /// Lines that are damaged, and skipped. Counted from 1.
  std::vector<std::size_t> damagedLines;

  static Content read(std::string_view text);
};

/// `text` with these settings; an empty value removes its line. All other lines stay as they are, and so do
/// the comment and the line end behind a changed value. Absent if a value cannot be written: it has control
/// characters, or needs both kinds of quotes.
std::optional<std::string> withChanges(std::string_view text, const Values& changes);

}  // namespace tavelo::settings
