#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

/// The text of a .desktop file, to change it.
namespace tavelo::linuxdesktop {

/// The keys of the main group, with their values as they stand; empty if there is no such group.
std::map<std::string, std::string> entryKeys(std::string_view text);

/// `text` with another value for the key in its main group, or without the key. Every other line stays.
/// `text` must have a main group.
std::string withEntryKey(std::string_view text, std::string_view key,
                         const std::optional<std::string>& value);

/// A command line for the key Exec that starts `program`, whatever characters its path has.
std::string execLine(std::string_view program);

/// The program that such a command line starts, behind any variables that it sets; empty if there is none.
std::string programIn(std::string_view execLine);

}  // namespace tavelo::linuxdesktop
