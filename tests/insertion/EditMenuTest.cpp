#include <memory>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "insertion/EditMenu.h"
#include "platform/simulated/SimulatedDesktop.h"

namespace tavelo {
namespace {

using platform::Seconds;
using simulated::MenuLanguage;
using simulated::MenuVisibility;
using testing::ElementsAre;
using testing::IsEmpty;

class EditMenuTest : public testing::Test {
 protected:
  simulated::SimulatedMenuBar& menus(MenuLanguage language, const MenuVisibility& visibility = {}) {
    auto& bar = editor_.addMenuBar(language);
    bar.setVisibility(visibility);
    return bar;
  }
  bool press() { return pressIn(editor_); }
  static bool pressIn(platform::RunningApplication& application) {
    return EditMenu().pressPasteMenuItem(application, [] { return true; });
  }
  double now() { return std::chrono::duration<double>(desktop_.loop().uptime()).count(); }

  simulated::SimulatedDesktop desktop_;
  simulated::SimulatedApplication& editor_ = desktop_.openApplication("Soạn thảo");
};

TEST_F(EditMenuTest, ItemsThatShowWhileClosedArePressedWithoutOpeningAMenu) {
  auto& bar = menus(MenuLanguage::vietnamese);
  EXPECT_TRUE(press());
  EXPECT_THAT(bar.presses(), ElementsAre("Dán"));
  EXPECT_EQ(editor_.activations(), 1);
  EXPECT_EQ(now(), 0.0);
}

TEST_F(EditMenuTest, HiddenItemsAreWaitedForInsideTheOpenedEditMenu) {
  auto& bar = menus(MenuLanguage::english, {.whileClosed = false, .builtAfter = Seconds{0.119}});
  bool ranInside = false;
  desktop_.loop().asyncAfter(Seconds{0.05}, [&] { ranInside = true; });
  EXPECT_TRUE(press());
  EXPECT_THAT(bar.presses(), ElementsAre("Paste"));
  EXPECT_EQ(now(), 0.12);
  EXPECT_TRUE(ranInside) << "the main queue keeps running during the wait";
}

TEST_F(EditMenuTest, MenuThatComesTooLateStaysOpen) {
  auto& bar = menus(MenuLanguage::vietnamese, {.whileClosed = false, .builtAfter = Seconds{0.2}});
  EXPECT_FALSE(press());
  EXPECT_THAT(bar.presses(), IsEmpty());
  EXPECT_NE(bar.openMenu(), nullptr);
}

TEST_F(EditMenuTest, RefusedOpeningIsIgnoredAndTheSecondSearchBeginsAtTheEditMenu) {
  auto& bar = editor_.addMenuBar();
  bar.setVisibility({.whileClosed = false});
  bar.add("Khác").add("Paste elsewhere");
  auto& edit = bar.add("Edit");
  edit.add("Paste here");
  edit.setEnabled(false);
  desktop_.loop().asyncAfter(Seconds{0.05}, [&] { bar.setVisibility({.whileClosed = true}); });
  EXPECT_TRUE(press());
  EXPECT_THAT(bar.presses(), ElementsAre("Paste here"));
}

TEST_F(EditMenuTest, ForeignTitlesAreLeftAlone) {
  auto& bar = menus(MenuLanguage::german, {.whileClosed = false});
  EXPECT_FALSE(press());
  EXPECT_EQ(bar.openMenu(), nullptr);
  EXPECT_EQ(now(), 0.0);
}

TEST_F(EditMenuTest, FirstMatchInTreeOrderWinsAndTitlesCompareCanonically) {
  auto& bar = editor_.addMenuBar();
  auto& menu = bar.add("Edit");
  menu.add("Dán kiểu");
  auto& match = menu.add("Paste and Match Style");
  EXPECT_TRUE(press());
  EXPECT_THAT(bar.presses(), ElementsAre("Paste and Match Style")) << "a Vietnamese title must match exactly";
  match.setEnabled(false);
  EXPECT_FALSE(press());
  EXPECT_EQ(bar.openMenu(), nullptr) << "a visible item that refuses ends the attempt";

  auto& other = desktop_.openApplication("Khác");
  auto& otherBar = other.addMenuBar();
  otherBar.setVisibility({.whileClosed = false});
  otherBar.add("S\u01B0\u0309a").add(" DA\u0301N\n");
  EXPECT_TRUE(pressIn(other)) << "decomposed, in capitals, with space around it";
}

TEST_F(EditMenuTest, SearchEndsEightLevelsDeep) {
  auto& bar = editor_.addMenuBar();
  auto* deepest = &bar.add("1");
  for (int level = 2; level <= 6; ++level) deepest = &deepest->add("cấp");
  auto& depth7 = deepest->add("cấp");
  depth7.add("Paste");
  EXPECT_FALSE(press()) << "the item is at depth 8";
  deepest->add("Paste");
  EXPECT_TRUE(press()) << "this one is at depth 7";
}

TEST_F(EditMenuTest, GoneHungOrBareApplicationsHaveNothingToPress) {
  EXPECT_FALSE(press()) << "no menu bar";
  auto& bar = menus(MenuLanguage::english);
  editor_.hang();
  EXPECT_FALSE(press());
  editor_.wake();
  const int activations = editor_.activations();
  editor_.terminate();
  EXPECT_FALSE(press());
  EXPECT_EQ(editor_.activations(), activations) << "not even brought to the front";
  EXPECT_THAT(bar.presses(), IsEmpty());
}

}  // namespace
}  // namespace tavelo
