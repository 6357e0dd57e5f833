#pragma once

#include <cstddef>
#include <string_view>

namespace tavelo::language {

/// One text in both languages, made at compile time. "{0}", "{1}"… stand for what is only known later. A text
/// without one of the languages, with other placeholders in one of them, or with any other brace, does not
/// compile.
struct Text {
  consteval Text(const char* inEnglish, const char* inVietnamese)
      : english(inEnglish), vietnamese(inVietnamese) {
    if (english.empty() || vietnamese.empty()) throw "a language is missing";
    if (placeholders(english) != placeholders(vietnamese)) throw "the languages have different placeholders";
  }

  std::string_view english;
  std::string_view vietnamese;

 private:
  /// One bit for each placeholder; they begin at 0 and leave no number out.
  static consteval unsigned placeholders(std::string_view text) {
    unsigned found = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
      if (text[at] == '}') throw "a brace that closes nothing";
      if (text[at] != '{') continue;
      if (at + 2 >= text.size() || text[at + 1] < '0' || text[at + 1] > '9' || text[at + 2] != '}') {
        throw "a brace that opens no placeholder";
      }
      found |= 1U << static_cast<unsigned>(text[at + 1] - '0');
      at += 2;
    }
    if ((found & (found + 1)) != 0) throw "a placeholder is left out";
    return found;
  }
};

}  // namespace tavelo::language
