#include "commands/Diagnosis.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <string_view>
#include <system_error>

#include <unistd.h>

#include "commands/InputOutput.h"
#include "language/Language.h"
#include "language/SystemErrors.h"
#include "language/Texts.h"
#include "platform/Environment.h"

namespace tavelo {
namespace {

using language::say;
namespace words = language::words;

std::string nameOf(Verdict verdict) {
  if (verdict == Verdict::fine) return say(words::fine);
  return say(verdict == Verdict::limited ? words::limited : words::broken);
}

/// In characters: each byte but those that continue one.
std::size_t widthOf(const std::string& text) {
  return static_cast<std::size_t>(
      std::ranges::count_if(text, [](char each) { return (each & 0xC0) != 0x80; }));
}

std::string padded(const std::string& text, std::size_t width) {
  return text + std::string(std::max(width, widthOf(text)) - widthOf(text) + 2, ' ');
}

/// With "~" in place of the home folder.
std::string fromHome(const std::filesystem::path& file) {
  const auto home = platform::environmentVariable("HOME") + "/";
  const auto name = file.string();
  return home.size() > 1 && name.starts_with(home) ? "~/" + name.substr(home.size()) : name;
}

}  // namespace

bool canDictate(const std::vector<Finding>& findings) {
  return std::ranges::none_of(findings, [](const Finding& each) { return each.verdict == Verdict::broken; });
}

bool canDictate(const std::string& lines) {
  // The program that described them may speak another language.
  return std::ranges::none_of(
      std::array{words::broken.english, words::broken.vietnamese}, [&](std::string_view broken) {
        return lines.starts_with(broken) || lines.find('\n' + std::string(broken)) != std::string::npos;
      });
}

std::string describe(const std::vector<Finding>& findings) {
  std::size_t serviceWidth = 0;
  for (const auto& each : findings) serviceWidth = std::max(serviceWidth, widthOf(each.service));
  std::string lines;
  for (const auto& each : findings) {
    lines += padded(nameOf(each.verdict), 7) + padded(each.service, serviceWidth) + each.words + '\n';
    if (!each.fix.empty()) lines += "  " + say(words::doThis) + each.fix + '\n';
  }
  return lines;
}

std::string origin(const settings::Settings& settings, std::initializer_list<const char*> names) {
  for (const char* name : names) {
    switch (settings.get(name).origin) {
      case settings::Origin::environment:
        return say(words::fromThere, {name});
      case settings::Origin::file:
        return say(words::fromThere, {onOneLine(fromHome(*settings.file()))});
      case settings::Origin::unset:
        break;
    }
  }
  return say(words::theDefault);
}

std::string writeError(std::filesystem::path folder) {
  std::error_code error;
  while (!std::filesystem::exists(folder, error) && folder.has_relative_path()) folder = folder.parent_path();
  if (!std::filesystem::is_directory(folder, error)) return say(words::notAFolder, {folder.string()});
  return access(folder.c_str(), W_OK | X_OK) == 0 ? std::string{} : language::systemError(errno);
}

Finding historyFolder(const std::string& folder, const std::string& error) {
  const std::string name = onOneLine(folder);
  if (error.empty()) return {say(words::historyFolder), Verdict::fine, name};
  return {say(words::historyFolder), Verdict::limited, say(words::historyNotKept, {name, onOneLine(error)})};
}

}  // namespace tavelo
