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

using platform::Seconds;
using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

// docs/simulated-desktop.md shows this test.
TEST(SimulatedDesktop, TellsTheStoryOfAPaste) {
  SimulatedDesktop desktop;
  SimulatedApplication& notes = desktop.openApplication("Notes", "org.example.notes");
  SimulatedField& body = notes.addField("body", FieldBehaviour::pasteOnly());
  body.setValue("Thưa anh, ");

  std::vector<std::string> timeline;
  desktop.observe([&](const WorldEvent& event) {
    timeline.push_back(std::to_string(event.time / 1ms) + " ms " + nameOf(event.kind) + ": " + event.text);
  });

  // What a service would do 0.45 s later, through the platform interfaces alone.
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
  desktop.advance(Seconds{0});
  EXPECT_THAT(order, ElementsAre(1, 2, 3));
  EXPECT_EQ(desktop.loop().uptime(), 250ms);
}

TEST(SimulatedTime, RealTimeRunEndsAsSoonAsAThreadPosts) {
  SimulatedDesktop desktop{{.time = DesktopOptions::Time::realTime}};
  bool posted = false;
  std::thread poster{[&] { platform::current().mainQueue.async([&] { posted = true; }); }};
  EXPECT_TRUE(desktop.loop().runUntil([&] { return posted; }, Seconds{30}));
  poster.join();
  EXPECT_LT(desktop.loop().uptime(), 30s);
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
