#pragma once

#include <string>

namespace CLI {
class App;
class Error;
}  // namespace CLI

namespace tavelo {

/// Has the library for command lines speak the current language: the headings of --help, and what it says of
/// a wrong command line. Call it once before the commands are added, and `groupCommands` after that.
void speakCurrentLanguage(CLI::App& app);

/// Puts the commands under one heading.
void groupCommands(CLI::App& app);

}  // namespace tavelo
