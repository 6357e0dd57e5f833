#include "platform/linux/x11/keyboard/KeyNames.h"

#include <algorithm>
#include <array>

#include <X11/keysym.h>

namespace tavelo::linuxdesktop {
namespace {

struct KeyName {
  unsigned long symbol;
  const char* name;
};

constexpr std::array<KeyName, 19> keyNames{{{XK_Control_R, "Ctrl phải"},
                                            {XK_Control_L, "Ctrl trái"},
                                            {XK_Alt_R, "Alt phải"},
                                            {XK_Alt_L, "Alt trái"},
                                            {XK_ISO_Level3_Shift, "AltGr"},
                                            {XK_Shift_R, "Shift phải"},
                                            {XK_Shift_L, "Shift trái"},
                                            {XK_Super_R, "Super phải"},
                                            {XK_Super_L, "Super trái"},
                                            {XK_Caps_Lock, "Caps Lock"},
                                            {XK_Num_Lock, "Num Lock"},
                                            {XK_Scroll_Lock, "Scroll Lock"},
                                            {XK_Print, "Print Screen"},
                                            {XK_Page_Up, "Page Up"},
                                            {XK_Page_Down, "Page Down"},
                                            {XK_Escape, "Esc"},
                                            {XK_Return, "Enter"},
                                            {XK_BackSpace, "Backspace"},
                                            {XK_space, "phím cách"}}};

}  // namespace

std::optional<std::string> vietnameseKeyName(unsigned long symbol) {
  const auto* const found = std::ranges::find(keyNames, symbol, &KeyName::symbol);
  return found == keyNames.end() ? std::nullopt : std::optional<std::string>(found->name);
}

}  // namespace tavelo::linuxdesktop
