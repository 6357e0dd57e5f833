#include "platform/linux/x11/keyboard/KeyUses.h"

#include <algorithm>
#include <array>

#include <X11/XF86keysym.h>
#include <X11/Xlib.h>
#include <X11/keysym.h>

#include "platform/linux/x11/keyboard/KeyNames.h"

namespace tavelo::linuxdesktop {
namespace {

using platform::KeyUse;

template <std::size_t size>
bool isOneOf(unsigned long symbol, const std::array<unsigned long, size>& symbols) {
  return std::ranges::find(symbols, symbol) != symbols.end();
}

constexpr std::array<unsigned long, 6> dailyModifiers{XK_Shift_L, XK_Shift_R, XK_Control_L,
                                                      XK_Alt_L,   XK_Meta_L,  XK_Super_L};
constexpr std::array<unsigned long, 3> locks{XK_Caps_Lock, XK_Shift_Lock, XK_Num_Lock};
/// They are held to type what is printed on other keys, or begin such a character.
constexpr std::array<unsigned long, 3> composers{XK_Mode_switch, XK_Multi_key, XK_Codeinput};
constexpr std::array<unsigned long, 6> freeKeys{XK_Control_R, XK_Alt_R, XK_Meta_R,
                                                XK_Super_R,   XK_Pause, XK_Scroll_Lock};

bool isFunctionKey(unsigned long symbol) {
  // The kernel calls F13 and the next ones by the names of media keys.
  return (symbol >= XK_F1 && symbol <= XK_F35) || (symbol >= XK_Hyper_L && symbol <= XK_Hyper_R) ||
         symbol == XF86XK_Tools || (symbol >= XF86XK_Launch0 && symbol <= XF86XK_LaunchF);
}

bool types(unsigned long symbol) {
  constexpr unsigned long firstFunction = 0xff00;
  constexpr unsigned long firstUnicode = 0x01000000;
  constexpr unsigned long lastUnicode = 0x0110ffff;
  const bool isCharacter = symbol < firstFunction || (symbol >= firstUnicode && symbol <= lastUnicode);
  const bool isKeypad = symbol >= XK_KP_Space && symbol <= XK_KP_Equal;
  return isCharacter || isKeypad || isOneOf(symbol, composers);
}

}  // namespace

KeyUse useOfKey(unsigned long symbol) {
  if (symbol == NoSymbol) return KeyUse::unknown;
  if (isOneOf(symbol, dailyModifiers)) return KeyUse::dailyModifier;
  // The ISO keysyms and those of dead keys lie among the characters: locks and level shifts first.
  if (isOneOf(symbol, locks) || (symbol >= XK_ISO_Lock && symbol <= XK_ISO_Last_Group_Lock))
    return symbol == XK_ISO_Level3_Shift || symbol == XK_ISO_Level5_Shift ? KeyUse::types : KeyUse::locks;
  if (isOneOf(symbol, freeKeys) || isFunctionKey(symbol)) return KeyUse::free;
  return types(symbol) ? KeyUse::types : KeyUse::commands;
}

platform::KeyFacts keyFacts(unsigned long symbol) {
  const char* setting = symbol == NoSymbol ? nullptr : XKeysymToString(symbol);
  if (setting == nullptr) return {};
  return {.setting = setting, .name = vietnameseKeyName(symbol).value_or(setting), .use = useOfKey(symbol)};
}

}  // namespace tavelo::linuxdesktop
