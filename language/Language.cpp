#include "language/Language.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <optional>
#include <sstream>

namespace tavelo::language {
namespace {

/// "vi" of "vi_VN.UTF-8".
std::string nameIn(const std::string& locale) { return locale.substr(0, locale.find_first_of("_.@")); }

std::optional<Language> known(const std::string& name) {
  if (name == "vi") return Language::vietnamese;
  if (name == "en" || name == "C" || name == "POSIX") return Language::english;
  return std::nullopt;
}

std::atomic<Language>& ofProcess() {
  static std::atomic<Language> language = languageOf([](const char* name) {
    const char* value = std::getenv(name);
    return std::string(value != nullptr ? value : "");
  });
  return language;
}

}  // namespace

Language languageOf(const std::function<std::string(const char*)>& variable) {
  std::string locale;
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    if (locale.empty()) locale = variable(name);
  }
  const std::string ofLocale = nameIn(locale);
  if (ofLocale.empty() || ofLocale == "C" || ofLocale == "POSIX") return Language::english;
  std::istringstream list(variable("LANGUAGE"));
  for (std::string each; std::getline(list, each, ':');) {
    if (const auto language = known(nameIn(each))) return *language;
  }
  return known(ofLocale).value_or(Language::english);
}

Language current() { return ofProcess(); }

void use(Language chosen) { ofProcess() = chosen; }

std::string say(Language language, const Text& text, std::initializer_list<std::string> arguments) {
  const std::string_view words = language == Language::vietnamese ? text.vietnamese : text.english;
  std::string said;
  for (std::size_t at = 0; at < words.size(); ++at) {
    // `Text` has checked that each brace belongs to a placeholder with one digit.
    const auto number = words[at] == '{' ? static_cast<std::size_t>(words[at + 1] - '0') : arguments.size();
    if (number < arguments.size()) {
      said += *(arguments.begin() + number);
      at += 2;
    } else {
      said += words[at];
    }
  }
  return said;
}

std::string say(const Text& text, std::initializer_list<std::string> arguments) {
  return say(current(), text, arguments);
}

}  // namespace tavelo::language
