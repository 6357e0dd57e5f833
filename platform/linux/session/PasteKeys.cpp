#include "platform/linux/session/PasteKeys.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <string_view>

namespace tavelo::linuxdesktop {
namespace {

/// Window classes and instances of terminals, in lower case.
constexpr std::array<std::string_view, 33> pasteWithControlShiftV{
    "alacritty",
    "black box",
    "blackbox",
    "cool-retro-term",
    "com.raggesilver.blackbox",
    "contour",
    "deepin-terminal",
    "foot",
    "footclient",
    "ghostty",
    "com.mitchellh.ghostty",
    "gnome-terminal",
    "gnome-terminal-server",
    "guake",
    "io.elementary.terminal",
    "kgx",
    "org.gnome.console",
    "org.gnome.ptyxis",
    "kitty",
    "konsole",
    "lxterminal",
    "mate-terminal",
    "org.wezfurlong.wezterm",
    "qterminal",
    "roxterm",
    "sakura",
    "st-256color",
    "terminator",
    "terminology",
    "termite",
    "tilix",
    "xfce4-terminal",
    "yakuake",
};

/// These paste the selection with Shift-Insert, and have no keys that paste the clipboard.
constexpr std::array<std::string_view, 5> withoutPasteKeys{"xterm", "uxterm", "urxvt", "rxvt", "mlterm"};

template <class Table>
bool holds(const Table& table, const WindowClass& window) {
  const auto isOneOf = [&](std::string text) {
    std::ranges::transform(text, text.begin(), [](unsigned char each) { return std::tolower(each); });
    return std::ranges::find(table, text) != table.end();
  };
  return isOneOf(window.name) || isOneOf(window.instance);
}

}  // namespace

PasteKeys pasteKeys(const WindowClass& window) {
  if (holds(pasteWithControlShiftV, window)) return PasteKeys::controlShiftV;
  return holds(withoutPasteKeys, window) ? PasteKeys::none : PasteKeys::controlV;
}

}  // namespace tavelo::linuxdesktop
