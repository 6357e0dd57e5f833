#include "settings/SettingsLines.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <sstream>

#include <CLI/CLI.hpp>

namespace tavelo::settings {
namespace {

constexpr std::string_view blanks = " \t";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// The first place at or after `from` that is no blank, or the length of `text`.
std::size_t skipBlanks(std::string_view text, std::size_t from) {
  return std::min(text.find_first_not_of(blanks, from), text.size());
}

bool beginsComment(char each) { return each == '#' || each == ';'; }

bool isControl(char each) {
  return (static_cast<unsigned char>(each) < 0x20 && each != '\t') || each == 0x7F;
}

bool isName(std::string_view text) {
  constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_";
  return !text.empty() && letters.find(text.front()) != std::string_view::npos &&
         std::ranges::none_of(text, [&](char each) {
           return letters.find(each) == std::string_view::npos && !(each >= '0' && each <= '9') &&
                  each != '-';
         });
}

/// Where the value that begins at `begin` ends; absent if its quotes do not, or something follows them.
std::optional<std::size_t> endOfValue(std::string_view text, std::size_t begin) {
  if (begin < text.size() && (text[begin] == '"' || text[begin] == '\'')) {
    const auto quote = text.find(text[begin], begin + 1);
    if (quote == std::string_view::npos) return std::nullopt;
    const auto rest = skipBlanks(text, quote + 1);
    return rest == text.size() || beginsComment(text[rest]) ? std::optional(quote + 1) : std::nullopt;
  }
  auto end = begin;
  for (auto at = begin; at < text.size(); at = skipBlanks(text, end)) {
    if (beginsComment(text[at])) break;
    end = std::min(text.find_first_of(blanks, at), text.size());
  }
  return end;
}

/// What the configuration reader makes of `NAME=value`. Lists, comments and sections are not for it: a path
/// may have a comma, a "#" or a blank.
std::string readValue(const std::string& setting) {
  CLI::ConfigBase reader;
  reader.comment('\1')->arrayBounds('\2', '\3')->arrayDelimiter('\4')->parentSeparator('\5');
  std::istringstream stream(setting);
  const auto items = reader.from_config(stream);
  return items.empty() || items.front().inputs.empty() ? std::string{} : items.front().inputs.front();
}

/// The value as it stands in the file: bare if that is read as the same value, else in quotes.
std::optional<std::string> written(const std::string& value) {
  for (const char* quote : {"", "\"", "'"}) {
    auto text = quote + value + quote;
    const auto line = Line::read("x=" + text);
    if (line.kind == Line::Kind::setting && line.value == value) return text;
  }
  return std::nullopt;
}

/// Calls `each` for every line of `text`: without its line feed, and with it.
template <typename Each>
void forEachLine(std::string_view text, Each each) {
  while (!text.empty()) {
    const auto whole = text.substr(0, std::min(text.find('\n'), text.size() - 1) + 1);
    each(whole.substr(0, whole.size() - (whole.back() == '\n' ? 1 : 0)), whole);
    text.remove_prefix(whole.size());
  }
}

}  // namespace

Line Line::read(std::string_view text) {
  if (text.ends_with('\r')) text.remove_suffix(1);
  const auto begin = skipBlanks(text, text.starts_with(byteOrderMark) ? byteOrderMark.size() : 0);
  if (begin == text.size() || beginsComment(text[begin])) return {};
  Line line{.kind = Kind::damaged, .name = {}, .value = {}};
  const auto equals = text.find('=');
  if (equals == std::string_view::npos || equals < begin || std::ranges::any_of(text, isControl)) return line;
  auto name = text.substr(begin, equals - begin);
  name.remove_suffix(name.size() - std::min(name.find_last_not_of(blanks) + 1, name.size()));
  const auto valueBegins = skipBlanks(text, equals + 1);
  const auto valueEnds = endOfValue(text, valueBegins);
  if (!isName(name) || !valueEnds) return line;
  line.kind = Kind::setting;
  line.name = name;
  line.valueBegins = valueBegins;
  line.valueEnds = *valueEnds;
  line.value = readValue(line.name + '=' + std::string(text.substr(valueBegins, *valueEnds - valueBegins)));
  return line;
}

Content Content::read(std::string_view text) {
  Content content;
  std::size_t number = 0;
  forEachLine(text, [&](std::string_view bare, std::string_view) {
    ++number;
    const auto line = Line::read(bare);
    if (line.kind == Line::Kind::setting) content.values[line.name] = line.value;
    if (line.kind == Line::Kind::damaged) content.damagedLines.push_back(number);
  });
  std::erase_if(content.values, [](const auto& each) { return each.second.empty(); });
  return content;
}

std::optional<std::string> withChanges(std::string_view text, const Values& changes) {
  Values left;
  for (const auto& [name, value] : changes) {
    const auto form = written(value);
    if (!isName(name) || !form) return std::nullopt;
    left[name] = value.empty() ? std::string{} : *form;
  }
  std::string changed;
  std::string lineEnd = "\n";
  forEachLine(text, [&](std::string_view bare, std::string_view whole) {
    if (whole.ends_with("\r\n")) lineEnd = "\r\n";
    const auto line = Line::read(bare);
    if (line.kind != Line::Kind::setting || !changes.contains(line.name)) return void(changed += whole);
    const auto value = left.find(line.name);
    // A line that an earlier one of its name has replaced, or that goes.
    if (value == left.end() || value->second.empty()) return;
    changed.append(whole.substr(0, line.valueBegins)).append(value->second);
    changed.append(whole.substr(line.valueEnds));
    left.erase(value);
  });
  for (const auto& [name, value] : left) {
    if (value.empty()) continue;
    if (!changed.empty() && !changed.ends_with('\n')) changed += lineEnd;
    changed.append(name).append("=").append(value).append(lineEnd);
  }
  return changed;
}

}  // namespace tavelo::settings
