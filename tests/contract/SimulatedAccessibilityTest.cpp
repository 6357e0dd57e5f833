#include <chrono>
#include <string>
#include <variant>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/simulated/SimulatedDesktop.h"

namespace tavelo::simulated {
namespace {

using platform::AXError;
using platform::AXUIElementRef;
using platform::AXValue;
using platform::Seconds;
using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;
namespace ax = platform::ax;

std::vector<AXUIElementRef> childrenOf(const AXUIElementRef& element) {
  AXValue value;
  platform::current().accessibility.copyAttributeValue(element, ax::children, value);
  const auto* children = std::get_if<std::vector<AXUIElementRef>>(&value);
  return children == nullptr ? std::vector<AXUIElementRef>{} : *children;
}

std::string titleOf(const AXUIElementRef& element) {
  AXValue value;
  platform::current().accessibility.copyAttributeValue(element, ax::title, value);
  const auto* title = std::get_if<std::string>(&value);
  return title == nullptr ? "" : *title;
}

AXUIElementRef child(const AXUIElementRef& element, const std::string& title) {
  for (const auto& each : childrenOf(element)) {
    if (titleOf(each) == title) return each;
  }
  return nullptr;
}

AXUIElementRef menuBarOf(const SimulatedApplication& application) {
  auto& accessibility = platform::current().accessibility;
  AXValue value;
  accessibility.copyAttributeValue(accessibility.createApplication(application.processIdentifier()),
                                   ax::menuBar, value);
  const auto* bar = std::get_if<AXUIElementRef>(&value);
  return bar == nullptr ? nullptr : *bar;
}

AXError press(const AXUIElementRef& element) {
  return platform::current().accessibility.performAction(element, ax::press);
}

TEST(SimulatedMenus, HiddenItemsAppearAfterTheMenuHasOpened) {
  SimulatedDesktop desktop;
  desktop.pasteboard().copy("Xin chào.");
  SimulatedApplication& editor = desktop.openApplication("Soạn thảo");
  SimulatedField& body = editor.addField("body");
  SimulatedMenuBar& menus = editor.addMenuBar(MenuLanguage::vietnamese);
  menus.setVisibility({.whileClosed = false, .builtAfter = Seconds{0.05}});

  const AXUIElementRef edit = child(menuBarOf(editor), "Sửa");
  ASSERT_NE(edit, nullptr);
  EXPECT_THAT(childrenOf(edit), IsEmpty());
  EXPECT_EQ(press(edit), AXError::success);
  desktop.advance(Seconds{0.049});
  EXPECT_THAT(childrenOf(edit), IsEmpty());
  desktop.advance(Seconds{0.001});
  ASSERT_NE(menus.openMenu(), nullptr);
  const AXUIElementRef paste = child(edit, "Dán");
  EXPECT_EQ(press(paste), AXError::success);
  EXPECT_EQ(body.value(), "Xin chào.");
  EXPECT_THAT(menus.presses(), ElementsAre("Dán"));
  EXPECT_EQ(menus.openMenu(), nullptr);
  // The item disappeared with its menu.
  EXPECT_EQ(press(paste), AXError::invalidUIElement);
}

TEST(SimulatedMenus, DeepAndDecomposedTitlesAreKeptAndTrimmed) {
  SimulatedDesktop desktop;
  SimulatedApplication& editor = desktop.openApplication("Editor");
  SimulatedMenuItem* menu = &editor.addMenuBar().add("Edit");
  for (int depth = 0; depth < 9; ++depth) menu = &menu->add(std::nullopt);
  menu->add(" Da\u0301n \n", MenuRole::paste);
  AXUIElementRef element = child(menuBarOf(editor), "Edit");
  for (int depth = 0; depth < 9; ++depth) element = childrenOf(element).at(0);
  EXPECT_EQ(titleOf(element), "");
  EXPECT_EQ(titleOf(childrenOf(element).at(0)), "Da\u0301n");
}

TEST(SimulatedAccessibilityRules, HungApplicationCostsTheBoundAndDeadOneNothing) {
  SimulatedDesktop desktop;
  SimulatedApplication& notes = desktop.openApplication("Notes");
  const AXUIElementRef body = notes.addField("body").shared_from_this();
  auto& accessibility = platform::current().accessibility;
  AXValue value = std::string{"untouched"};
  notes.hang();
  EXPECT_EQ(accessibility.copyAttributeValue(body, ax::value, value), AXError::cannotComplete);
  EXPECT_EQ(accessibility.copyAttributeValue(accessibility.createSystemWide(), ax::focusedUIElement, value),
            AXError::cannotComplete);
  EXPECT_EQ(desktop.loop().uptime(), 500ms);
  notes.wake();
  EXPECT_EQ(accessibility.setAttributeValue(body, ax::selectedText, std::string{"x"}), AXError::success);
  desktop.accessibility().setTrusted(false);
  EXPECT_EQ(accessibility.copyAttributeValue(body, ax::value, value), AXError::apiDisabled);
  desktop.accessibility().setTrusted(true);
  notes.terminate();
  EXPECT_EQ(accessibility.copyAttributeValue(body, ax::value, value), AXError::invalidUIElement);
  EXPECT_EQ(value, AXValue{std::string{"untouched"}});
  EXPECT_EQ(desktop.loop().uptime(), 500ms);
  EXPECT_EQ(platform::current().workspace.frontmostApplication(), nullptr);
}

TEST(SimulatedAccessibilityRules, PromptIsShownOnlyOnRequestAndTrustComesFromThePerson) {
  SimulatedDesktop desktop;
  desktop.accessibility().setTrusted(false);
  auto& accessibility = platform::current().accessibility;
  EXPECT_FALSE(accessibility.isProcessTrustedWithOptions({.prompt = false}));
  EXPECT_EQ(desktop.accessibility().prompts(), 0);
  EXPECT_FALSE(accessibility.isProcessTrustedWithOptions({.prompt = true}));
  EXPECT_EQ(desktop.accessibility().prompts(), 1);
  desktop.accessibility().setTrusted(true);
  EXPECT_TRUE(accessibility.isProcessTrusted());
}

}  // namespace
}  // namespace tavelo::simulated
