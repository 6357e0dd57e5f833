#include "platform/simulated/KeyNames.h"

#include <algorithm>
#include <array>

namespace tavelo::simulated {
namespace {

namespace keyflags = platform::keyflags;

struct KeyName {
  Key key;
  std::string_view name;
  /// In stories.
  std::string_view lowerCase;
  std::uint64_t flag = 0;
};

/// The modifiers come first, in the order of a chord's name.
constexpr std::array<KeyName, 10> keys{{{Key::function, "Fn", "fn", keyflags::secondaryFn},
                                        {Key::control, "Control", "control", keyflags::control},
                                        {Key::option, "Option", "option", keyflags::option},
                                        {Key::shift, "Shift", "shift", keyflags::shift},
                                        {Key::command, "Command", "command", keyflags::command},
                                        {Key::a, "A", "a"},
                                        {Key::c, "C", "c"},
                                        {Key::v, "V", "v"},
                                        {Key::returnKey, "Return", "return"},
                                        {Key::space, "Space", "space"}}};

}  // namespace

std::uint64_t flagOf(Key key) {
  const auto* known = std::ranges::find(keys, key, &KeyName::key);
  return known == keys.end() ? 0 : known->flag;
}

std::string chordName(Key key, std::uint64_t flags) {
  std::string name;
  for (const auto& modifier : keys) {
    if (flagOf(key) == 0 && (flags & modifier.flag) != 0) name.append(modifier.name).append("-");
  }
  const auto* known = std::ranges::find(keys, key, &KeyName::key);
  if (known == keys.end()) return name + "key " + std::to_string(static_cast<std::int64_t>(key));
  return name.append(known->name);
}

std::optional<std::vector<Key>> parseChord(std::string_view chord) {
  std::vector<Key> parsed;
  while (true) {
    const auto end = chord.find('-');
    const auto* known = std::ranges::find(keys, chord.substr(0, end), &KeyName::lowerCase);
    if (known == keys.end()) return std::nullopt;
    parsed.push_back(known->key);
    if (end == std::string_view::npos) return parsed;
    chord.remove_prefix(end + 1);
  }
}

}  // namespace tavelo::simulated
