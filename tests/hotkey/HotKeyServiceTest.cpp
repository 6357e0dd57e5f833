#include <optional>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hotkey/HotKeyService.h"
#include "platform/simulated/SimulatedDesktop.h"

namespace tavelo {
namespace {

using platform::Seconds;
using simulated::FunctionKeyReporting;
using simulated::Key;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto startHold = HotKeyAction::startHold;
constexpr auto stopHold = HotKeyAction::stopHold;
constexpr auto toggle = HotKeyAction::toggle;
constexpr auto cancelHold = HotKeyAction::cancelHold;

class HotKeyServiceTest : public testing::Test {
 protected:
  HotKeyServiceTest() {
    make();
    service_->start();
  }
  /// Replaces the service by a new one, which is not started.
  void make() {
    service_.emplace();
    service_->onAction = [this](HotKeyAction action) { actions_.push_back(action); };
  }
  std::vector<HotKeyAction> taken() { return std::exchange(actions_, {}); }
  void wait(double seconds) { desktop_.advance(Seconds{seconds}); }
  void hold(std::initializer_list<Key> keys) {
    for (const auto key : keys) keyboard().press(key);
  }
  void release(std::initializer_list<Key> keys) {
    for (const auto key : keys) keyboard().release(key);
  }
  simulated::SimulatedKeyboard& keyboard() { return desktop_.keyboard(); }

  simulated::SimulatedDesktop desktop_;
  simulated::SimulatedApplication& editor_ = desktop_.openApplication("Soạn thảo");
  std::optional<HotKeyService> service_;
  std::vector<HotKeyAction> actions_;
};

TEST_F(HotKeyServiceTest, HoldIsReportedOnceThoughBothWatchersSawIt) {
  service_->start();
  EXPECT_EQ(keyboard().tapCount(), 1U) << "a second start adds nothing";
  EXPECT_EQ(keyboard().monitorCount(), 3U);
  for (const auto reporting : {FunctionKeyReporting::flagsChanged, FunctionKeyReporting::keyDownAndUp}) {
    keyboard().setFunctionKeyReporting(reporting);
    hold({Key::function});
    EXPECT_THAT(taken(), ElementsAre(startHold));
    wait(1.0);
    release({Key::function});
    EXPECT_THAT(taken(), ElementsAre(stopHold));
    wait(1.0);
  }
  std::vector<platform::KeyEventType> received;
  for (const auto& key : editor_.receivedKeys()) received.push_back(key.type);
  using enum platform::KeyEventType;
  EXPECT_THAT(received, ElementsAre(flagsChanged, flagsChanged, keyDown, keyUp))
      << "the application still gets its keys";
}

TEST_F(HotKeyServiceTest, OwnWindowInFrontIsWatchedByTheTapAlone) {
  desktop_.workspace().ownApplication().bringToFront();
  hold({Key::function});
  EXPECT_THAT(taken(), ElementsAre(startHold));
  wait(1.0);
  keyboard().disableTaps();
  release({Key::function});
  EXPECT_THAT(taken(), IsEmpty());
  editor_.bringToFront();
  hold({Key::shift});
  EXPECT_THAT(taken(), ElementsAre(stopHold)) << "in other applications the monitors work without the tap";
}

TEST_F(HotKeyServiceTest, OtherModifiersDoNothingAndReportTheFnBit) {
  hold({Key::shift});
  release({Key::shift});
  EXPECT_THAT(taken(), IsEmpty());
  hold({Key::function});
  wait(1.0);
  hold({Key::shift});
  release({Key::shift});
  release({Key::function});
  EXPECT_THAT(taken(), ElementsAre(startHold, stopHold)) << "and do not restart the debounce";
}

TEST_F(HotKeyServiceTest, ReleaseWithinDebounceIsLostAndNextReportEndsTheHold) {
  hold({Key::function});
  wait(0.08);
  release({Key::function});
  EXPECT_THAT(taken(), ElementsAre(startHold)) << "exactly 0.08 s is still too early";
  wait(0.01);
  EXPECT_THAT(taken(), IsEmpty()) << "dropped, not deferred";
  hold({Key::shift});
  EXPECT_THAT(taken(), ElementsAre(stopHold)) << "the debounce counts only from the press";
}

TEST_F(HotKeyServiceTest, PressWithinDebounceIsLostTogetherWithItsRelease) {
  hold({Key::function});
  wait(0.081);
  release({Key::function});
  wait(0.08);
  hold({Key::function});
  wait(1.0);
  release({Key::function});
  EXPECT_THAT(taken(), ElementsAre(startHold, stopHold));
}

TEST_F(HotKeyServiceTest, BusyMainThreadDoesNotMakePressAndReleaseSimultaneous) {
  keyboard().pressAt(platform::toUptime(Seconds{1.0}), Key::function);
  keyboard().releaseAt(platform::toUptime(Seconds{1.2}), Key::function);
  desktop_.loop().stall(Seconds{3.0});
  wait(0);
  EXPECT_THAT(taken(), ElementsAre(startHold, stopHold));
}

TEST_F(HotKeyServiceTest, HeldToggleRepeatsAtMostEvery450Milliseconds) {
  int triggers = 0;
  service_->onTrigger = [&] { triggers += static_cast<int>(actions_.size()); };
  keyboard().setAutoRepeat(Seconds{0.45}, Seconds{0.01});
  hold({Key::control, Key::option, Key::v});
  wait(0.45);
  EXPECT_THAT(taken(), ElementsAre(toggle)) << "the first repeat comes exactly at the threshold";
  wait(0.45);
  EXPECT_THAT(taken(), ElementsAre(toggle));
  EXPECT_EQ(triggers, 2) << "each one after its action";
  release({Key::v});
  wait(1.0);
  EXPECT_THAT(taken(), IsEmpty());
}

TEST_F(HotKeyServiceTest, ToggleNeedsControlAndOptionAndMindsNothingElse) {
  const auto tapV = [this](std::initializer_list<Key> modifiers) {
    hold(modifiers);
    hold({Key::v});
    release({Key::v});
    release(modifiers);
    wait(1.0);
    return taken();
  };
  EXPECT_THAT(tapV({Key::control}), IsEmpty());
  EXPECT_THAT(tapV({Key::option}), IsEmpty());
  EXPECT_THAT(tapV({Key::control, Key::option, Key::shift}), ElementsAre(toggle));
  EXPECT_THAT(tapV({Key::command, Key::control, Key::option}), ElementsAre(toggle));
  hold({Key::control, Key::option, Key::c});
  EXPECT_THAT(taken(), IsEmpty());
  hold({Key::v, Key::function});
  EXPECT_THAT(taken(), ElementsAre(toggle, startHold)) << "it does not start the debounce of the hold key";
}

TEST_F(HotKeyServiceTest, InterruptedHoldIsCancelledOnceAndItsReleaseIsNotReported) {
  hold({Key::function});
  wait(1.0);
  keyboard().interruptHold();
  keyboard().interruptHold();
  EXPECT_THAT(taken(), ElementsAre(startHold, cancelHold));
  hold({Key::shift});
  release({Key::shift, Key::function});
  EXPECT_THAT(taken(), IsEmpty());
  wait(1.0);
  hold({Key::function});
  wait(1.0);
  release({Key::function});
  EXPECT_THAT(taken(), ElementsAre(startHold, stopHold)) << "the next hold is a whole one";
}

TEST_F(HotKeyServiceTest, ShortcutWithinDebounceIsCancelledAndTheNextPressIsNotLost) {
  hold({Key::function});
  wait(0.02);
  keyboard().interruptHold();
  wait(0.02);
  release({Key::function});
  EXPECT_THAT(taken(), ElementsAre(startHold, cancelHold));
  wait(0.02);
  hold({Key::function});
  EXPECT_THAT(taken(), IsEmpty()) << "a bounce, or the shortcut again";
  keyboard().interruptHold();
  release({Key::function});
  EXPECT_THAT(taken(), IsEmpty());
  wait(0.1);
  hold({Key::function});
  EXPECT_THAT(taken(), ElementsAre(startHold));
}

TEST_F(HotKeyServiceTest, KeysWithoutAHoldAndTheToggleDuringOneCancelNothing) {
  keyboard().interruptHold();
  EXPECT_THAT(taken(), IsEmpty());
  hold({Key::function});
  wait(1.0);
  hold({Key::control, Key::option});
  keyboard().interruptHold(Key::v);
  hold({Key::v});
  release({Key::v, Key::option, Key::control, Key::function});
  EXPECT_THAT(taken(), ElementsAre(startHold, toggle, stopHold));
  keyboard().interruptHold();
  EXPECT_THAT(taken(), IsEmpty());
}

TEST_F(HotKeyServiceTest, WithoutTrustItIsSilentUntilTheNextStartAfterTheGrant) {
  make();
  desktop_.accessibility().setTrusted(false);
  service_->start();
  hold({Key::function});
  wait(1.0);
  release({Key::function});
  EXPECT_THAT(taken(), IsEmpty());
  EXPECT_EQ(keyboard().tapCount(), 0U);

  desktop_.accessibility().setTrusted(true);
  service_->start();
  EXPECT_EQ(keyboard().tapCount(), 1U);
  EXPECT_EQ(keyboard().monitorCount(), 3U);
  desktop_.workspace().ownApplication().bringToFront();
  hold({Key::function});
  EXPECT_THAT(taken(), ElementsAre(startHold));
}

TEST_F(HotKeyServiceTest, RefusedSourceLeavesTheMonitorsAndRefusedMonitorsAreTriedAgain) {
  make();
  keyboard().setRefusesRunLoopSource(true);
  keyboard().setRefusesMonitors(true);
  service_->start();
  EXPECT_EQ(keyboard().monitorCount(), 0U);
  hold({Key::function});
  EXPECT_THAT(taken(), IsEmpty());
  keyboard().setRefusesMonitors(false);
  service_->start();
  EXPECT_EQ(keyboard().tapCount(), 1U);
  wait(1.0);
  hold({Key::shift});
  EXPECT_THAT(taken(), ElementsAre(startHold));
}

TEST_F(HotKeyServiceTest, TransitionsWithoutAReceiverStillCount) {
  service_->onAction = nullptr;
  hold({Key::function});
  wait(1.0);
  service_->onAction = [this](HotKeyAction action) { actions_.push_back(action); };
  release({Key::function});
  EXPECT_THAT(taken(), ElementsAre(stopHold));
}

TEST_F(HotKeyServiceTest, WatchersEndWithTheService) {
  service_.reset();
  EXPECT_EQ(keyboard().tapCount(), 0U);
  EXPECT_EQ(keyboard().sourceCount(), 0U);
  EXPECT_EQ(keyboard().monitorCount(), 0U);
  hold({Key::function});
  EXPECT_THAT(taken(), IsEmpty());
}

}  // namespace
}  // namespace tavelo
