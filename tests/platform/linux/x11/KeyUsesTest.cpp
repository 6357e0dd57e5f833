#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "platform/linux/x11/keyboard/KeyUses.h"

// Behind GoogleTest, because Xlib has a macro called None.
#include <X11/Xlib.h>
#include <X11/keysym.h>

namespace tavelo::linuxdesktop {
namespace {

using enum platform::KeyUse;

TEST(KeyUsesTest, OnlyKeysThatNobodyMissesAreFree) {
  const struct {
    platform::KeyUse use;
    const char* keys;
  } table[] = {
      {free, "Control_R Alt_R Super_R Pause Scroll_Lock F1 F12 F24 Hyper_R XF86Tools XF86Launch5"},
      {types,
       "a v 1 space comma adiaeresis Cyrillic_a U1EC5 dead_acute dead_horn KP_5 KP_Add "
       "ISO_Level3_Shift ISO_Level5_Shift Mode_switch Multi_key"},
      {dailyModifier, "Shift_L Shift_R Control_L Alt_L Meta_L Super_L"},
      {locks, "Caps_Lock Num_Lock ISO_Next_Group ISO_Level3_Latch"},
      {commands,
       "Return Tab Escape BackSpace Delete Insert Left Prior Menu Print "
       "XF86AudioMute XF86AudioRaiseVolume XF86Sleep"},
  };
  for (const auto& [use, keys] : table) {
    std::istringstream names(keys);
    for (std::string name; names >> name;) {
      const auto symbol = XStringToKeysym(name.c_str());
      ASSERT_NE(symbol, NoSymbol) << name;
      EXPECT_EQ(useOfKey(symbol), use) << name;
    }
  }
  EXPECT_EQ(keyFacts(NoSymbol).use, unknown);
  EXPECT_EQ(keyFacts(NoSymbol).setting, "");
  EXPECT_EQ(keyFacts(XK_Control_R).setting, "Control_R");
  EXPECT_EQ(keyFacts(XK_Control_R).name, "Ctrl phải");
}

}  // namespace
}  // namespace tavelo::linuxdesktop
