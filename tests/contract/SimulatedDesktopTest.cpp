#include <chrono>
#include <stdexcept>
#include <string>
#include <thread>
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

// docs/simulated-desktop.md shows this test.
TEST(SimulatedDesktop, TellsTheStoryOfAPaste) {
  SimulatedDesktop desktop;
  SimulatedApplication& notes = desktop.openApplication("Notes", "org.example.notes");
  SimulatedField& body = notes.addField("body", tempers::terminal());
  body.setValue("Thưa anh, ");

  std::vector<std::string> timeline;
  desktop.observe([&](const WorldEvent& event) {
    timeline.push_back(std::to_string(event.time / 1ms) + " ms " + nameOf(event.kind) + ": " + event.text);
  });

  // What a service would do, 0.45 s later and through the platform's interfaces alone.
  const platform::Platform& platform = platform::current();
  platform.mainQueue.asyncAfter(Seconds{0.45}, [&] {
    platform.generalPasteboard.clearContents();
    platform.generalPasteboard.setString("xin chào.", platform::pasteboardTypeString);
    auto key = platform.keyboardEvents.createKeyboardEvent(platform::EventSourceState::hidSystem,
                                                           platform::keycodes::v, true);
    key->flags = platform::keyflags::command;
    platform.keyboardEvents.post(platform::EventTapLocation::hid, *key);
  });
  desktop.keyboard().tap(Key::function, Seconds{0.3});
  desktop.advance(Seconds{1});

  EXPECT_EQ(body.value(), "Thưa anh, xin chào.");
  EXPECT_THAT(timeline, ElementsAre("0 ms key: Fn down", "300 ms key: Fn up", "450 ms pasteboard: cleared",
                                    "450 ms pasteboard: string “xin chào.”",
                                    "450 ms keystroke: post Command-V down at hid",
                                    "450 ms text: Notes/body holds “Thưa anh, xin chào.”"));
}

TEST(SimulatedTime, WallClockSetBackLeavesTheUptimeAlone) {
  SimulatedDesktop desktop;
  desktop.advance(Seconds{10});
  const platform::Clock& clock = platform::current().clock;
  const auto wall = clock.now();
  desktop.loop().setWallTime(wall - 1h);
  desktop.advance(Seconds{0.5});
  EXPECT_EQ(clock.uptime(), 10500ms);
  EXPECT_EQ(clock.now(), wall - 1h + 500ms);
}

TEST(SimulatedTime, BusyMainThreadRunsWhatFellDueByDeadline) {
  SimulatedDesktop desktop;
  std::vector<int> order;
  desktop.loop().asyncAfter(Seconds{0.2}, [&] { order.push_back(2); });
  desktop.loop().asyncAfter(Seconds{0.1}, [&] { order.push_back(1); });
  desktop.loop().async([&] {
    desktop.loop().stall(Seconds{0.25});
    desktop.loop().async([&] { order.push_back(3); });
  });
  desktop.advance(Seconds{0});
  EXPECT_THAT(order, IsEmpty());
  EXPECT_TRUE(desktop.loop().runUntilIdle(Seconds{1}));
  EXPECT_THAT(order, ElementsAre(1, 2, 3));
  EXPECT_EQ(desktop.loop().uptime(), 250ms);
}

TEST(SimulatedTime, RunsAreBounded) {
  SimulatedDesktop desktop;
  std::function<void()> again = [&] { desktop.loop().asyncAfter(Seconds{0.1}, again); };
  again();
  EXPECT_FALSE(desktop.loop().runUntilIdle(Seconds{1}));
  EXPECT_FALSE(desktop.loop().runUntil([] { return false; }, Seconds{1}));
  EXPECT_TRUE(desktop.loop().runUntil([&] { return desktop.loop().uptime() > 2050ms; }, Seconds{1}));
  EXPECT_EQ(desktop.loop().uptime(), 2100ms);
}

TEST(SimulatedTime, RealTimeRunEndsAsSoonAsAThreadPosts) {
  SimulatedDesktop desktop{{.time = DesktopOptions::Time::realTime}};
  bool posted = false;
  std::thread poster{[&] { platform::current().mainQueue.async([&] { posted = true; }); }};
  EXPECT_TRUE(desktop.loop().runUntil([&] { return posted; }, Seconds{30}));
  poster.join();
  EXPECT_LT(desktop.loop().uptime(), 30s);
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
  // The item went with the menu.
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
  notes.setAnswerTime(Seconds{0.1});
  EXPECT_EQ(accessibility.setAttributeValue(body, ax::selectedText, std::string{"x"}), AXError::success);
  EXPECT_EQ(desktop.loop().uptime(), 600ms);
  desktop.accessibility().setTrusted(false);
  EXPECT_EQ(accessibility.copyAttributeValue(body, ax::value, value), AXError::apiDisabled);
  desktop.accessibility().setTrusted(true);
  notes.terminate();
  EXPECT_EQ(accessibility.copyAttributeValue(body, ax::value, value), AXError::invalidUIElement);
  EXPECT_EQ(value, AXValue{std::string{"untouched"}});
  EXPECT_EQ(desktop.loop().uptime(), 600ms);
  EXPECT_EQ(platform::current().workspace.frontmostApplication(), nullptr);
}

TEST(SimulatedAccessibilityRules, TrustMayFollowThePrompt) {
  SimulatedDesktop desktop;
  desktop.accessibility().setTrusted(false);
  desktop.accessibility().grantTrustAfterPrompt(Seconds{3});
  auto& accessibility = platform::current().accessibility;
  EXPECT_FALSE(accessibility.isProcessTrustedWithOptions({.prompt = false}));
  EXPECT_EQ(desktop.accessibility().prompts(), 0);
  EXPECT_FALSE(accessibility.isProcessTrustedWithOptions({.prompt = true}));
  EXPECT_EQ(desktop.accessibility().prompts(), 1);
  desktop.advance(Seconds{3});
  EXPECT_TRUE(accessibility.isProcessTrusted());
}

TEST(SimulatedWorkspaces, ActivationTakesEffectLaterAndPanelsHoldTheFocus) {
  SimulatedDesktop desktop;
  SimulatedApplication& notes = desktop.openApplication("Notes");
  SimulatedField& body = notes.addField("body");
  SimulatedApplication& mail = desktop.openApplication("Mail");
  SimulatedField& subject = mail.addField("subject");
  notes.setActivationDelay(Seconds{0.2});
  EXPECT_TRUE(notes.activate(platform::ActivationOptions::activateIgnoringOtherApps));
  desktop.advance(Seconds{0.19});
  EXPECT_EQ(desktop.workspace().focusedField(), &subject);
  desktop.advance(Seconds{0.01});
  EXPECT_EQ(desktop.workspace().focusedField(), &body);
  desktop.workspace().setPanelFocus(&subject);
  EXPECT_EQ(desktop.workspace().frontmost(), &notes);
  EXPECT_EQ(desktop.workspace().focusedField(), &subject);
  subject.close();
  EXPECT_EQ(desktop.workspace().focusedField(), &body);
  notes.terminate();
  EXPECT_FALSE(notes.activate(platform::ActivationOptions::none));
}

/// Records what a tap on everything is told.
class TapLog {
 public:
  TapLog() {
    const auto mask = platform::maskOf(platform::KeyEventType::flagsChanged) |
                      platform::maskOf(platform::KeyEventType::keyDown) |
                      platform::maskOf(platform::KeyEventType::keyUp);
    tap_ =
        keyboard_.createEventTap(platform::EventTapLocation::session, platform::EventTapPlacement::headInsert,
                                 platform::EventTapOptions::listenOnly, mask,
                                 [this](const platform::KeyboardEvent& event) { events.push_back(event); });
    if (tap_) source_ = keyboard_.addRunLoopSource(*tap_);
  }
  bool created() const { return tap_ != nullptr; }

  std::vector<platform::KeyboardEvent> events;

 private:
  platform::KeyboardEvents& keyboard_ = platform::current().keyboardEvents;
  std::unique_ptr<platform::EventTap> tap_;
  std::unique_ptr<platform::RunLoopSource> source_;
};

TEST(SimulatedKeyboards, KeyTimeIsWhenItMovedHoweverBusyTheMainThread) {
  SimulatedDesktop desktop;
  const TapLog log;
  desktop.keyboard().pressAt(100ms, Key::function);
  desktop.keyboard().releaseAt(300ms, Key::function);
  desktop.loop().asyncAfter(Seconds{0.05}, [&] { desktop.loop().stall(Seconds{1}); });
  desktop.advance(Seconds{2});
  desktop.keyboard().setDeliveryDelay(Seconds{0.5});
  desktop.keyboard().press(Key::shift);
  ASSERT_EQ(log.events.size(), 2U);
  EXPECT_EQ(log.events[1].timestamp - log.events[0].timestamp, 200ms);
  desktop.advance(Seconds{0.5});
  ASSERT_EQ(log.events.size(), 3U);
  EXPECT_EQ(log.events[2].timestamp, 2000ms);
}

TEST(SimulatedKeyboards, HeldKeyRepeatsUntilItIsReleased) {
  SimulatedDesktop desktop;
  const TapLog log;
  desktop.keyboard().press(Key::control);
  desktop.keyboard().press(Key::option);
  desktop.keyboard().press(Key::v);
  desktop.advance(Seconds{0.6});
  desktop.keyboard().release(Key::v);
  desktop.advance(Seconds{1});
  // Two modifiers, the press, repeats at 0.5, 0.55 and 0.6 s, the release.
  ASSERT_EQ(log.events.size(), 7U);
  EXPECT_EQ(log.events[5].timestamp, 600ms);
  EXPECT_EQ(log.events[5].flags, platform::keyflags::control | platform::keyflags::option);
  EXPECT_TRUE(desktop.loop().runUntilIdle(Seconds{0}));
}

TEST(SimulatedKeyboards, FunctionKeyMayBeAPlainKeyAndTapsAreSwitchedOffOnce) {
  SimulatedDesktop desktop;
  desktop.accessibility().setTrusted(false);
  EXPECT_FALSE(TapLog{}.created());
  desktop.accessibility().setTrusted(true);
  const TapLog log;
  desktop.keyboard().setFunctionKeyReporting(FunctionKeyReporting::keyDownAndUp);
  desktop.keyboard().press(Key::function);
  desktop.keyboard().disableTaps();
  desktop.keyboard().disableTaps();
  desktop.keyboard().release(Key::function);
  ASSERT_EQ(log.events.size(), 2U);
  EXPECT_EQ(log.events[0].type, platform::KeyEventType::keyDown);
  EXPECT_EQ(log.events[0].flags, 0U);
  EXPECT_EQ(log.events[1].type, platform::KeyEventType::tapDisabledByTimeout);
}

TEST(SimulatedFiles, FaultsLeaveTheOldContents) {
  SimulatedDesktop desktop;
  platform::FileManager& files = platform::current().fileManager;
  const auto folder = *files.applicationSupportDirectory() / "Tavelo";
  desktop.files().setRefusesFolders(true);
  EXPECT_FALSE(files.createDirectory(folder));
  desktop.files().setRefusesFolders(false);
  EXPECT_TRUE(files.createDirectory(folder));
  EXPECT_TRUE(files.writeAtomically(folder / "cache", "old"));
  for (const WriteFault fault : {WriteFault::noSpace, WriteFault::torn}) {
    desktop.files().setWriteFault(fault);
    EXPECT_FALSE(files.writeAtomically(folder / "cache", "new"));
  }
  EXPECT_EQ(files.contents(folder / "cache"), "old");
  desktop.files().setUnreadable(folder / "cache");
  EXPECT_TRUE(files.fileExists(folder / "cache"));
  EXPECT_EQ(files.contents(folder / "cache"), std::nullopt);
  desktop.files().remove(folder.parent_path());
  EXPECT_FALSE(files.fileExists(folder / "cache"));
}

TEST(SimulatedRulesDeathTest, ProgramErrorsStopTheProgramWithOneLine) {
  SimulatedDesktop desktop;
  EXPECT_DEATH(std::thread{[] { platform::current().generalPasteboard.clearContents(); }}.join(),
               "simulated desktop: Pasteboard::clearContents off the main thread");
  EXPECT_DEATH(
      {
        desktop.loop().async([] { throw std::runtime_error{"lost"}; });
        desktop.advance(Seconds{0});
      },
      "a block of the main queue threw: lost");
  EXPECT_DEATH(
      {
        auto& keyboard = platform::current().keyboardEvents;
        auto tap = keyboard.createEventTap({}, {}, {}, 0, [](const platform::KeyboardEvent&) {});
        const auto source = keyboard.addRunLoopSource(*tap);
        tap.reset();
      },
      "dropped before its run-loop source");
  EXPECT_DEATH(
      {
        const auto engine = platform::current().audio.makeEngine();
        for (int i = 0; i < 2; ++i) engine->installTap(0, 0, {}, [](const platform::AudioBuffer&) {});
      },
      "a second tap on an audio bus");
}

}  // namespace
}  // namespace tavelo::simulated
