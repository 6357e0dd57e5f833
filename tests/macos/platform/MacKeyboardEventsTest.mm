#include <memory>

#include <gmock/gmock.h>

#import "platform/macos/MacKeyboardEvents.h"
#include "platform/posix/SystemClock.h"
#include "platform/simulated/VirtualTimeLoop.h"
#include "tests/contract/KeyboardContract.h"
#include "tests/macos/fakes/Fakes.h"
#import "tests/macos/fakes/Keyboard.h"

namespace tavelo::macos {
namespace {

using fakes::FakeKey;
using platform::EventTapLocation;
using platform::KeyboardEvent;
using platform::KeyEventType;
using testing::ElementsAre;
namespace keyflags = platform::keyflags;

constexpr platform::KeyEventMask everyKey = 0x1C00;
constexpr FakeKey fnDown{.type = kCGEventFlagsChanged, .code = 63, .flags = keyflags::secondaryFn};
constexpr FakeKey fnUp{.type = kCGEventFlagsChanged, .code = 63};

class MacKeyboardEventsTest : public fakes::FakeFrameworks {
 protected:
  std::unique_ptr<platform::EventTap> tap(platform::KeyboardEvents::Handler handler) {
    return events_.createEventTap(EventTapLocation::session, platform::EventTapPlacement::headInsert,
                                  platform::EventTapOptions::listenOnly, everyKey, std::move(handler));
  }

  simulated::VirtualTimeLoop loop_;
  fakes::Keyboard keyboard_;
  MacKeyboardEvents events_{loop_, loop_};
};

TEST_F(MacKeyboardEventsTest, WatchersAreMadeAndEndedWithTheirExactArguments) {
  auto eventTap = tap([](const KeyboardEvent&) {});
  auto source = events_.addRunLoopSource(*eventTap);
  eventTap->enable(true);
  auto monitor = events_.addGlobalMonitor(0x1000, [](const KeyboardEvent&) {});
  source.reset();
  eventTap.reset();
  monitor.reset();
  EXPECT_THAT(fakes::takeCalls(),
              ElementsAre("CGEventTapCreate(1, 0, 1, 7168)", "CFMachPortCreateRunLoopSource(0)",
                          "CFRunLoopAddSource(\"kCFRunLoopCommonModes\")", "CGEventTapEnable(1)",
                          "+[NSEvent addGlobalMonitorForEventsMatchingMask:4096 handler:<block>]",
                          "CFRunLoopRemoveSource(\"kCFRunLoopCommonModes\")", "CGEventTapEnable(0)",
                          "CFMachPortInvalidate()", "+[NSEvent removeMonitor:<FakeMonitor>]"));
  keyboard_.refuses = true;
  EXPECT_EQ(tap([](const KeyboardEvent&) {}), nullptr);
  EXPECT_EQ(events_.addGlobalMonitor(0x400, [](const KeyboardEvent&) {}), nullptr);
  EXPECT_FALSE(events_.createKeyboardEvent(platform::EventSourceState::hidSystem, 9, true));
}

TEST_F(MacKeyboardEventsTest, OnlyAKeyOfTheUserInterruptsAHold) {
  constexpr uint64_t fn = keyflags::secondaryFn;
  const struct {
    const char* what;
    std::vector<FakeKey> keys;
    int notices;
  } cases[] = {
      {"letter", {fnDown, {.code = 0, .flags = fn}, fnUp}, 1},
      {"arrow, which is Home with Fn", {fnDown, {.code = 115, .flags = fn}, fnUp}, 1},
      {"arrow without Fn, which bears its bit", {fnDown, fnUp, {.code = 123, .flags = fn}}, 0},
      {"Fn itself, reported a second time", {fnDown, {.code = 179, .flags = fn}, fnUp}, 0},
      {"held before Fn", {{.code = 0}, fnDown, {.code = 0, .flags = fn, .isRepeat = true}, fnUp}, 0},
      {"modifier",
       {fnDown, {.type = kCGEventFlagsChanged, .code = 56, .flags = fn | keyflags::shift}, fnUp},
       0},
      {"keyboard without the modifier", {{.code = 63}, {.code = 0}, {.type = kCGEventKeyUp, .code = 63}}, 1},
      {"key after it", {{.code = 63}, {.type = kCGEventKeyUp, .code = 63}, {.code = 0}}, 0},
  };
  int tapped = 0;
  int monitored = 0;
  const auto counter = [](int& count) {
    return [&count](const KeyboardEvent& event) { count += event.type == KeyEventType::holdInterrupted; };
  };
  const auto eventTap = tap(counter(tapped));
  const auto source = events_.addRunLoopSource(*eventTap);
  for (const auto& [what, keys, notices] : cases) {
    tapped = 0;
    for (const auto& key : keys) keyboard_.deliver(key);
    EXPECT_EQ(tapped, notices) << what;
  }
  // Without a tap, the monitors find out by themselves.
  eventTap->enable(false);
  const auto monitor = events_.addGlobalMonitor(everyKey, counter(monitored));
  for (const auto& [what, keys, notices] : cases) {
    monitored = 0;
    for (const auto& key : keys) keyboard_.deliver(key);
    EXPECT_EQ(monitored, notices) << what;
  }
}

TEST_F(MacKeyboardEventsTest, WatcherThatTheNoticeDropsGetsNoMore) {
  std::vector<KeyEventType> seen;
  std::unique_ptr<platform::EventTap> eventTap;
  std::unique_ptr<platform::RunLoopSource> source;
  std::unique_ptr<platform::EventMonitor> monitor;
  std::vector<std::unique_ptr<platform::EventMonitor>> added;
  const auto drop = [&](const KeyboardEvent& event) {
    seen.push_back(event.type);
    if (event.type != KeyEventType::holdInterrupted) return;
    source.reset();
    eventTap.reset();
    monitor.reset();
    for (int i = 0; i < 4; ++i) added.push_back(events_.addGlobalMonitor(0x800, [](const KeyboardEvent&) {}));
  };
  const auto watched = [&] {
    seen.clear();
    for (const auto& key : {fnDown, FakeKey{.code = 0}, fnUp}) keyboard_.deliver(key);
    return seen;
  };
  const auto untilTheNotice = ElementsAre(KeyEventType::flagsChanged, KeyEventType::holdInterrupted);
  monitor = events_.addGlobalMonitor(everyKey, drop);
  const auto next = events_.addGlobalMonitor(0x800, [](const KeyboardEvent&) {});
  EXPECT_THAT(watched(), untilTheNotice);
  eventTap = tap(drop);
  source = events_.addRunLoopSource(*eventTap);
  EXPECT_THAT(watched(), untilTheNotice);
}

TEST_F(MacKeyboardEventsTest, CommandVIsPostedOnceWithExactlyItsFlagsAndInterruptsNothing) {
  std::vector<KeyEventType> seen;
  const auto eventTap = tap([&](const KeyboardEvent& event) { seen.push_back(event.type); });
  const auto source = events_.addRunLoopSource(*eventTap);
  keyboard_.deliver(fnDown);
  auto down = events_.createKeyboardEvent(platform::EventSourceState::hidSystem, 9, true);
  ASSERT_TRUE(down);
  EXPECT_EQ(down->flags, keyflags::shift);
  down->flags = keyflags::command;
  fakes::takeCalls();
  events_.postToProcess(7, *down);
  events_.post(EventTapLocation::session, *down);
  EXPECT_THAT(fakes::takeCalls(), ElementsAre());
  events_.post(EventTapLocation::hid, *down);
  EXPECT_THAT(fakes::takeCalls(), testing::IsSupersetOf({"CGEventSourceCreate(1)", "CGEventPost(0)"}));
  ASSERT_EQ(keyboard_.posted.size(), 1U);
  EXPECT_EQ(keyboard_.posted[0].code, 9);
  EXPECT_EQ(keyboard_.posted[0].flags, 0x100000U);
  EXPECT_THAT(seen, ElementsAre(KeyEventType::flagsChanged, KeyEventType::keyDown));
}

TEST_F(MacKeyboardEventsTest, TimeIsWhenTheKeyMovedAndATimeOutIsToldAndLeftAtThat) {
  std::vector<KeyboardEvent> seen;
  const auto record = [&](const KeyboardEvent& event) { seen.push_back(event); };
  const auto eventTap = tap(record);
  const auto source = events_.addRunLoopSource(*eventTap);
  const auto monitor = events_.addGlobalMonitor(0x1000, record);
  loop_.advance(platform::Seconds{8});
  FakeKey late = fnDown;
  late.age = 0.5;
  keyboard_.deliver(late);
  ASSERT_EQ(seen.size(), 2U);
  EXPECT_EQ(seen[0].timestamp, loop_.uptime() - std::chrono::milliseconds(500));
  EXPECT_EQ(seen[0], seen[1]);
  late.age = -1;
  keyboard_.deliver(late);
  EXPECT_EQ(seen.back().timestamp, loop_.uptime()) << "a key from the future";
  seen.resize(2);
  fakes::takeCalls();
  keyboard_.timeOut();
  ASSERT_EQ(seen.size(), 3U);
  EXPECT_EQ(seen[2].type, KeyEventType::tapDisabledByTimeout);
  FakeKey timeless = fnUp;
  timeless.age = 1000;
  keyboard_.deliver(timeless);
  ASSERT_EQ(seen.size(), 4U) << "only the monitor";
  EXPECT_EQ(seen[3].timestamp, loop_.uptime()) << "a key posted without its time";
  EXPECT_THAT(fakes::takeCalls(), testing::Not(testing::Contains("CGEventTapEnable(1)")));
  eventTap->enable(true);
  fakes::answer("eventWithCGEvent:", [](fakes::Call&) {});
  FakeKey unreadable = fnDown;
  unreadable.type = kCGEventKeyUp;
  keyboard_.deliver(unreadable);
  EXPECT_EQ(seen.size(), 4U) << "an event that AppKit cannot read says nothing";
}

}  // namespace
}  // namespace tavelo::macos

namespace tavelo::contract {
namespace {

class MacKeyboard final : public KeyboardBackend {
 public:
  MacKeyboard() : pool_(objc_autoreleasePoolPush()) {}
  ~MacKeyboard() override {
    fakes::resetRecorder();
    objc_autoreleasePoolPop(pool_);
  }
  platform::KeyboardEvents& keyboard() override { return events_; }
  platform::Clock& clock() override { return clock_; }
  void moveFunctionKey(bool down) override { system_.deliver(down ? macos::fnDown : macos::fnUp); }
  void interruptHold() override {
    system_.deliver({.code = 0, .flags = platform::keyflags::secondaryFn});
    system_.deliver({.type = kCGEventKeyUp, .code = 0, .flags = platform::keyflags::secondaryFn});
  }
  void setOwnWindowActive(bool active) override { system_.ownWindowIsActive = active; }
  platform::ProcessIdentifier otherProcess() override { return 4711; }
  int pastes() override {
    int count = 0;
    for (const auto& key : system_.posted)
      count += key.type == kCGEventKeyDown && key.code == 9 && key.flags == kCGEventFlagMaskCommand;
    return count;
  }

 private:
  void* const pool_;
  simulated::VirtualTimeLoop loop_;
  posix::SystemClock clock_;
  fakes::Keyboard system_;
  macos::MacKeyboardEvents events_{loop_, clock_};
};

INSTANTIATE_TEST_SUITE_P(Mac, KeyboardContract, (only<KeyboardBackend, MacKeyboard>("fakes")),
                         nameOfParameter<KeyboardBackend>);

}  // namespace
}  // namespace tavelo::contract
