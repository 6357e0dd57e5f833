#include "platform/linux/session/DesktopEntry.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string_view>

namespace tavelo::linuxdesktop {
namespace {

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blank = " \t\r";
  const auto first = text.find_first_not_of(blank);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blank) + 1 - first);
}

/// The program in a command line, which may set variables first: `env NAME=value /usr/bin/program %U`.
std::string programOf(std::string_view command) {
  std::istringstream words{std::string(command)};
  std::string word;
  while (words >> word) {
    std::erase(word, '"');
    auto name = word.substr(word.rfind('/') + 1);
    if (name != "env" && name.find('=') == std::string::npos) return name;
  }
  return {};
}

/// Collects the lines of a file's main group.
class EntryReader final {
 public:
  explicit EntryReader(const std::vector<std::string>& localeNames)
      : localeNames_(localeNames), nameRank_(localeNames.size() + 1) {}

  void take(std::string_view key, std::string_view value) {
    if (key == "Type") {
      isApplication_ = value == "Application";
    } else if (key == "StartupWMClass") {
      entry_.windowClass = value;
    } else if (key == "Exec") {
      entry_.program = programOf(value);
    } else if (key == "NoDisplay" || key == "Hidden") {
      entry_.isHidden = entry_.isHidden || value == "true";
    } else if (key.starts_with("Name")) {
      takeName(key.substr(4), value);
    }
  }

  std::optional<DesktopEntry> result() {
    if (!isApplication_ || entry_.name.empty()) return std::nullopt;
    return std::move(entry_);
  }

 private:
  void takeName(std::string_view suffix, std::string_view value) {
    std::size_t rank = localeNames_.size();
    if (!suffix.empty()) {
      if (suffix.front() != '[' || suffix.back() != ']') return;
      const auto found = std::ranges::find(localeNames_, suffix.substr(1, suffix.size() - 2));
      if (found == localeNames_.end()) return;
      rank = static_cast<std::size_t>(found - localeNames_.begin());
    }
    if (rank >= nameRank_) return;
    nameRank_ = rank;
    entry_.name = value;
  }

  const std::vector<std::string>& localeNames_;
  /// The index in `localeNames_` of the best name so far. A name without a locale comes after all of them.
  std::size_t nameRank_;
  bool isApplication_ = false;
  DesktopEntry entry_;
};

}  // namespace

std::vector<std::string> localeNames(const std::string& locale) {
  const auto at = locale.find('@');
  const std::string modifier = at == std::string::npos ? "" : locale.substr(at);
  const std::string place = locale.substr(0, std::min(locale.find('.'), at));
  const std::string language = place.substr(0, place.find('_'));
  std::vector<std::string> names;
  for (const auto& name : {place + modifier, place, language + modifier, language}) {
    if (!name.empty() && std::ranges::find(names, name) == names.end()) names.push_back(name);
  }
  return names;
}

std::optional<DesktopEntry> readDesktopEntry(const std::filesystem::path& file,
                                             const std::vector<std::string>& localeNames) {
  std::error_code error;
  // Opening a pipe of that name would block.
  if (!std::filesystem::is_regular_file(file, error)) return std::nullopt;
  std::ifstream stream(file, std::ios::binary);
  EntryReader reader(localeNames);
  bool inMainGroup = false;
  for (std::string line; std::getline(stream, line);) {
    const auto text = trimmed(line);
    if (text.starts_with('[')) {
      if (inMainGroup) break;
      inMainGroup = text == "[Desktop Entry]";
    }
    const auto equals = text.find('=');
    if (!inMainGroup || text.starts_with('#') || equals == std::string_view::npos) continue;
    reader.take(trimmed(text.substr(0, equals)), trimmed(text.substr(equals + 1)));
  }
  return reader.result();
}

}  // namespace tavelo::linuxdesktop
