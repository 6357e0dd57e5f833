#include <chrono>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "platform/simulated/SimulatedDesktop.h"

namespace tavelo::simulated {
namespace {

using platform::Seconds;
using namespace std::chrono_literals;

/// Records the events of a tap for all types.
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
  ASSERT_EQ(log.events.size(), 2U);
  EXPECT_EQ(log.events[1].timestamp - log.events[0].timestamp, 200ms);
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
  // Two modifiers, the press, repeats after 0.5, 0.55 and 0.6 s, the release.
  ASSERT_EQ(log.events.size(), 7U);
  EXPECT_EQ(log.events[5].timestamp, 600ms);
  EXPECT_EQ(log.events[5].flags, platform::keyflags::control | platform::keyflags::option);
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

}  // namespace
}  // namespace tavelo::simulated
