#include "platform/linux/session/EntryText.h"

#include <algorithm>
#include <vector>

namespace tavelo::linuxdesktop {
namespace {

constexpr std::string_view blanks = " \t\r\n";

std::string_view trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

struct Line {
  /// With its line end.
  std::string_view text;
  bool inMainGroup = false;
  /// Empty if the line has none.
  std::string_view key;
  std::string_view value;
};

std::vector<Line> linesOf(std::string_view text) {
  std::vector<Line> lines;
  bool inMainGroup = false;
  while (!text.empty()) {
    Line line{.text = text.substr(0, std::min(text.find('\n'), text.size() - 1) + 1), .key = {}, .value = {}};
    text.remove_prefix(line.text.size());
    const auto content = trimmed(line.text);
    if (content.starts_with('[')) inMainGroup = content == "[Desktop Entry]";
    line.inMainGroup = inMainGroup;
    const auto equals = content.find('=');
    if (equals != std::string_view::npos && !content.starts_with('#')) {
      line.key = trimmed(content.substr(0, equals));
      line.value = trimmed(content.substr(equals + 1));
    }
    lines.push_back(line);
  }
  return lines;
}

/// Undoes the escapes that every value may have.
std::string unescaped(std::string_view value) {
  constexpr std::string_view escapes = "sntr\\";
  constexpr std::string_view meanings = " \n\t\r\\";
  std::string text;
  for (std::size_t at = 0; at < value.size(); ++at) {
    const auto found =
        value[at] == '\\' && at + 1 < value.size() ? escapes.find(value[at + 1]) : std::string_view::npos;
    text += found == std::string_view::npos ? value[at] : meanings[found];
    if (found != std::string_view::npos) ++at;
  }
  return text;
}

/// Takes the first word of a command line from `text`, without its quotes.
std::string takeWord(std::string_view& text) {
  text = trimmed(text);
  std::string word;
  bool quoted = false;
  std::size_t at = 0;
  for (; at < text.size() && (quoted || blanks.find(text[at]) == std::string_view::npos); ++at) {
    if (text[at] == '"') {
      quoted = !quoted;
      continue;
    }
    const bool escapes = (quoted && text[at] == '\\') || text.substr(at).starts_with("%%");
    if (escapes && at + 1 < text.size()) ++at;
    word += text[at];
  }
  text.remove_prefix(at);
  return word;
}

}  // namespace

std::map<std::string, std::string> entryKeys(std::string_view text) {
  std::map<std::string, std::string> keys;
  for (const auto& line : linesOf(text)) {
    // The first counts, as in the libraries that sessions use to read an entry.
    if (line.inMainGroup && !line.key.empty()) keys.emplace(line.key, line.value);
  }
  return keys;
}

std::string withEntryKey(std::string_view text, std::string_view key,
                         const std::optional<std::string>& value) {
  std::string changed;
  bool written = !value;
  for (const auto& line : linesOf(text)) {
    if (line.inMainGroup && line.key == key) continue;
    changed += line.text;
    if (written || !line.inMainGroup) continue;
    // Behind the group's header.
    if (!changed.ends_with('\n')) changed += '\n';
    changed.append(key).append("=").append(*value).append("\n");
    written = true;
  }
  return changed;
}

std::string execLine(std::string_view program) {
  std::string line = "\"";
  for (const char each : program) {
    switch (each) {
      case '"':
      case '`':
      case '$':
        // Escaped for the quotes, and the backslash once more for the value.
        line.append("\\\\").append(1, each);
        break;
      case '\\':
        line += "\\\\\\\\";
        break;
      case '%':
        line += "%%";
        break;
      case '\n':
        line += "\\n";
        break;
      default:
        line += each;
    }
  }
  return line + '"';
}

std::string programIn(std::string_view execLine) {
  const std::string line = unescaped(execLine);
  std::string_view rest = line;
  while (!trimmed(rest).empty()) {
    auto word = takeWord(rest);
    const bool setsVariable = !word.starts_with('/') && word.find('=') != std::string::npos;
    if (!setsVariable && word != "env" && !word.ends_with("/env")) return word;
  }
  return {};
}

}  // namespace tavelo::linuxdesktop
