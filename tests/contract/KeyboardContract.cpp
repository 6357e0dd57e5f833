#include "tests/contract/KeyboardContract.h"

#include <chrono>
#include <utility>

namespace tavelo::contract {
namespace {

using platform::EventTapLocation;
using platform::KeyboardEvent;
using platform::KeyEventType;
namespace keyflags = platform::keyflags;

TEST_P(KeyboardContract, TapSeesTheFunctionKeyMoveWithItsBitAndTime) {
  std::vector<KeyboardEvent> seen;
  const auto eventTap = tap([&](const KeyboardEvent& event) { seen.push_back(event); });
  ASSERT_NE(eventTap, nullptr);
  const auto source = keyboard().addRunLoopSource(*eventTap);
  ASSERT_NE(source, nullptr);
  const auto before = backend().clock().uptime();
  tapFunctionKey();
  ASSERT_EQ(seen.size(), 2U);
  EXPECT_EQ(seen[0].type, KeyEventType::flagsChanged);
  EXPECT_EQ(seen[0].keyCode, platform::keycodes::function);
  EXPECT_EQ(seen[0].flags, keyflags::secondaryFn);
  EXPECT_EQ(seen[1].flags, 0U);
  // Some X servers stamp keys with a coarse clock.
  EXPECT_LE(before - std::chrono::milliseconds(20), seen[0].timestamp);
  EXPECT_LE(seen[0].timestamp, seen[1].timestamp);
  EXPECT_LE(seen[1].timestamp, backend().clock().uptime());
}

TEST_P(KeyboardContract, TapDeliversOnlyWithItsSourceWhileEnabledAndForItsMask) {
  int seen = 0;
  auto eventTap = tap([&](const KeyboardEvent&) { ++seen; });
  const auto other = tap([&](const KeyboardEvent&) { seen += 100; }, platform::maskOf(KeyEventType::keyDown));
  auto otherSource = keyboard().addRunLoopSource(*other);
  tapFunctionKey();
  EXPECT_EQ(seen, 0);
  auto source = keyboard().addRunLoopSource(*eventTap);
  eventTap->enable(false);
  tapFunctionKey();
  EXPECT_EQ(seen, 0);
  eventTap->enable(true);
  tapFunctionKey();
  EXPECT_EQ(seen, 2);
  source.reset();
  tapFunctionKey();
  EXPECT_EQ(seen, 2);
  source = keyboard().addRunLoopSource(*eventTap);
  source.reset();
  eventTap.reset();
  tapFunctionKey();
  EXPECT_EQ(seen, 2);
}

TEST_P(KeyboardContract, InterruptedHoldIsToldOnceToEveryWatcherWhateverItsMask) {
  std::vector<KeyEventType> tapped;
  std::vector<KeyEventType> monitored;
  const auto eventTap = tap([&](const KeyboardEvent& event) { tapped.push_back(event.type); },
                            platform::maskOf(KeyEventType::keyUp));
  const auto source = keyboard().addRunLoopSource(*eventTap);
  const auto monitor =
      keyboard().addGlobalMonitor(platform::maskOf(KeyEventType::flagsChanged),
                                  [&](const KeyboardEvent& event) { monitored.push_back(event.type); });
  backend().moveFunctionKey(true);
  backend().interruptHold();
  backend().moveFunctionKey(false);
  std::erase(tapped, KeyEventType::keyUp);
  EXPECT_EQ(tapped, std::vector{KeyEventType::holdInterrupted});
  EXPECT_EQ(monitored, (std::vector{KeyEventType::flagsChanged, KeyEventType::holdInterrupted,
                                    KeyEventType::flagsChanged}));
}

TEST_P(KeyboardContract, MonitorsAreSilentWhileOurOwnWindowIsActive) {
  int tapped = 0;
  int monitored = 0;
  const auto eventTap = tap([&](const KeyboardEvent&) { ++tapped; });
  const auto source = keyboard().addRunLoopSource(*eventTap);
  auto monitor = keyboard().addGlobalMonitor(platform::maskOf(KeyEventType::flagsChanged),
                                             [&](const KeyboardEvent&) { ++monitored; });
  ASSERT_NE(monitor, nullptr);
  tapFunctionKey();
  EXPECT_EQ(std::pair(tapped, monitored), std::pair(2, 2));
  backend().setOwnWindowActive(true);
  tapFunctionKey();
  EXPECT_EQ(std::pair(tapped, monitored), std::pair(4, 2));
  backend().setOwnWindowActive(false);
  monitor.reset();
  tapFunctionKey();
  EXPECT_EQ(std::pair(tapped, monitored), std::pair(6, 2));
}

TEST_P(KeyboardContract, WatcherMayGoWhileItIsCalled) {
  int seen = 0;
  std::unique_ptr<platform::EventMonitor> monitor;
  monitor = keyboard().addGlobalMonitor(everything, [&](const KeyboardEvent&) {
    ++seen;
    monitor.reset();
  });
  tapFunctionKey();
  EXPECT_EQ(seen, 1);
}

TEST_P(KeyboardContract, CommandVOnAllThreeRoutesPastesOnce) {
  auto down =
      keyboard().createKeyboardEvent(platform::EventSourceState::hidSystem, platform::keycodes::v, true);
  auto up =
      keyboard().createKeyboardEvent(platform::EventSourceState::hidSystem, platform::keycodes::v, false);
  ASSERT_TRUE(down && up);
  EXPECT_EQ(down->type, KeyEventType::keyDown);
  EXPECT_EQ(up->type, KeyEventType::keyUp);
  down->flags = up->flags = keyflags::command;
  for (const auto& event : {*down, *up}) keyboard().postToProcess(backend().otherProcess(), event);
  EXPECT_EQ(backend().pastes(), 0);
  for (const auto& event : {*down, *up}) keyboard().post(EventTapLocation::hid, event);
  for (const auto& event : {*down, *up}) keyboard().post(EventTapLocation::session, event);
  EXPECT_EQ(backend().pastes(), 1);
}

}  // namespace
}  // namespace tavelo::contract
