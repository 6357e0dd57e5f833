#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>

#include "language/Text.h"

/// The language in which commands and errors speak to the user. Windows always speak Vietnamese.
namespace tavelo::language {

enum class Language : std::uint8_t { english, vietnamese };

/// The language that an environment asks for: LC_ALL, LC_MESSAGES and LANG name the locale, and unless that
/// is C, LANGUAGE may list languages that go before it. English if it asks for neither. `variable` gives a
/// variable's value; empty if unset.
Language languageOf(const std::function<std::string(const char*)>& variable);

/// The language of this process: what the environment asks for, or what `use` has chosen. Any thread.
Language current();

/// Chooses the language for the rest of the process. Any thread.
void use(Language chosen);

/// `text` with its placeholders replaced. One without an argument stays as it is. Any thread.
std::string say(Language language, const Text& text, std::initializer_list<std::string> arguments = {});

/// The same in the current language.
std::string say(const Text& text, std::initializer_list<std::string> arguments = {});

}  // namespace tavelo::language
