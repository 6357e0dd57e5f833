#include "commands/Diagnosis.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <system_error>

#include <unistd.h>

#include "commands/InputOutput.h"
#include "platform/Environment.h"

namespace tavelo {
namespace {

const char* nameOf(Verdict verdict) {
  if (verdict == Verdict::fine) return "fine";
  return verdict == Verdict::limited ? "limited" : "broken";
}

std::string padded(std::string text, std::size_t width) {
  text.resize(std::max(text.size(), width), ' ');
  return text + "  ";
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
  const std::string broken = nameOf(Verdict::broken);
  return !lines.starts_with(broken) && lines.find('\n' + broken) == std::string::npos;
}

std::string describe(const std::vector<Finding>& findings) {
  std::size_t serviceWidth = 0;
  for (const auto& each : findings) serviceWidth = std::max(serviceWidth, each.service.size());
  std::string lines;
  for (const auto& each : findings) {
    lines += padded(nameOf(each.verdict), 7) + padded(each.service, serviceWidth) + each.words + '\n';
  }
  return lines;
}

std::string origin(const settings::Settings& settings, std::initializer_list<const char*> names) {
  for (const char* name : names) {
    switch (settings.get(name).origin) {
      case settings::Origin::environment:
        return std::string("from ") + name;
      case settings::Origin::file:
        return "from " + onOneLine(fromHome(*settings.file()));
      case settings::Origin::unset:
        break;
    }
  }
  return "the default";
}

std::string writeError(std::filesystem::path folder) {
  std::error_code error;
  while (!std::filesystem::exists(folder, error) && folder.has_relative_path()) folder = folder.parent_path();
  if (!std::filesystem::is_directory(folder, error)) return folder.string() + " is no folder";
  return access(folder.c_str(), W_OK | X_OK) == 0 ? std::string{} : std::strerror(errno);
}

Finding historyFolder(const std::string& folder, const std::string& error) {
  const std::string name = onOneLine(folder);
  if (error.empty()) return {"history folder", Verdict::fine, name};
  return {"history folder", Verdict::limited,
          name + ": " + onOneLine(error) +
              ", so dictations are not kept: make it a folder that you may write to"};
}

}  // namespace tavelo
