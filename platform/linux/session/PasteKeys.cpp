#include "platform/linux/session/PasteKeys.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <string_view>

namespace tavelo::linuxdesktop {
namespace {

struct Habit {
  /// The class or the instance of the application's windows, in lower case.
  std::string_view window;
  PasteKeys keys;
};

using enum PasteKeys;

/// Each application that does not paste with Control-V, and what we saw when we tried it. "Documented" stands
/// for those that we have not tried.
constexpr auto habits = std::to_array<Habit>({
    // Terminals. Control-V is a character for the program inside them.
    {"xfce4-terminal", controlShiftV},            // pastes the clipboard; Shift-Insert pastes the selection
    {"sakura", controlShiftV},                    // pastes the clipboard; Shift-Insert pastes the selection
    {"kitty", controlShiftV},                     // pastes the clipboard; Shift-Insert pastes the selection
    {"st-256color", controlShiftV},               // pastes the clipboard; Shift-Insert pastes the selection
    {"alacritty", controlShiftV},                 // documented
    {"black box", controlShiftV},                 // documented
    {"blackbox", controlShiftV},                  // documented
    {"com.raggesilver.blackbox", controlShiftV},  // documented
    {"contour", controlShiftV},                   // documented
    {"cool-retro-term", controlShiftV},           // documented
    {"deepin-terminal", controlShiftV},           // documented
    {"foot", controlShiftV},                      // documented
    {"footclient", controlShiftV},                // documented
    {"ghostty", controlShiftV},                   // documented
    {"com.mitchellh.ghostty", controlShiftV},     // documented
    {"gnome-terminal", controlShiftV},            // documented
    {"gnome-terminal-server", controlShiftV},     // documented
    {"guake", controlShiftV},                     // documented
    {"io.elementary.terminal", controlShiftV},    // documented
    {"kgx", controlShiftV},                       // documented
    {"org.gnome.console", controlShiftV},         // documented
    {"org.gnome.ptyxis", controlShiftV},          // documented
    {"konsole", controlShiftV},                   // documented
    {"lxterminal", controlShiftV},                // documented
    {"mate-terminal", controlShiftV},             // documented
    {"org.wezfurlong.wezterm", controlShiftV},    // documented
    {"qterminal", controlShiftV},                 // documented
    {"roxterm", controlShiftV},                   // documented
    {"terminator", controlShiftV},                // documented
    {"terminology", controlShiftV},               // documented
    {"termite", controlShiftV},                   // documented
    {"tilix", controlShiftV},                     // documented
    {"yakuake", controlShiftV},                   // documented

    {"emacs", shiftInsert},  // pastes the clipboard, in the minibuffer too; Control-V scrolls

    // Nothing pastes the clipboard, and Control-V does something else.
    {"gvim", none},    // Control-V marks a block or quotes the next key; Shift-Insert does nothing
    {"xterm", none},   // Control-Shift-V types ^V; Shift-Insert pastes the selection
    {"uxterm", none},  // an xterm
    {"urxvt", none},   // as xterm
    {"rxvt", none},    // documented, as xterm
    {"mlterm", none},  // documented, as xterm
});

bool isCalled(const std::string& text, std::string_view lowerCase) {
  return std::ranges::equal(text, lowerCase, {}, [](unsigned char each) { return std::tolower(each); });
}

}  // namespace

PasteKeys pasteKeys(const WindowClass& window) {
  const auto habit = std::ranges::find_if(habits, [&](const Habit& each) {
    return isCalled(window.name, each.window) || isCalled(window.instance, each.window);
  });
  return habit == habits.end() ? controlV : habit->keys;
}

}  // namespace tavelo::linuxdesktop
