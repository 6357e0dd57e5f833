#include "rehearsal/KeyChord.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tavelo::rehearsal {
namespace {

using simulated::Key;

constexpr std::array<std::pair<std::string_view, Key>, 10> keys{{{"fn", Key::function},
                                                                 {"control", Key::control},
                                                                 {"option", Key::option},
                                                                 {"shift", Key::shift},
                                                                 {"command", Key::command},
                                                                 {"a", Key::a},
                                                                 {"c", Key::c},
                                                                 {"v", Key::v},
                                                                 {"return", Key::returnKey},
                                                                 {"space", Key::space}}};

}  // namespace

std::optional<std::vector<Key>> parseChord(std::string_view chord) {
  std::vector<Key> parsed;
  while (true) {
    const auto end = chord.find('-');
    const auto* known =
        std::ranges::find(keys, chord.substr(0, end), &std::pair<std::string_view, Key>::first);
    if (known == keys.end()) return std::nullopt;
    parsed.push_back(known->second);
    if (end == std::string_view::npos) return parsed;
    chord.remove_prefix(end + 1);
  }
}

}  // namespace tavelo::rehearsal
