#include <chrono>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/linux/accessibility/AccessibilityBus.h"
#include "platform/linux/accessibility/ApplicationDirectory.h"
#include "platform/linux/accessibility/AtspiElement.h"
#include "platform/linux/accessibility/ElementReader.h"
#include "platform/linux/accessibility/FrameSearch.h"
#include "platform/linux/accessibility/MenuAccess.h"
#include "platform/linux/accessibility/TextAccess.h"
#include "platform/TurnBudget.h"
#include "platform/simulated/VirtualTimeLoop.h"
#include "tests/platform/linux/FakeToolkit.h"
#include "tests/platform/linux/NoWindows.h"

namespace tavelo::linuxdesktop {
namespace {

using platform::AXError;
using platform::TurnBudget;

/// A main thread that gets little processor time: each look at the clock is `step` later than the last.
class SlowClock final : public platform::Clock {
 public:
  explicit SlowClock(std::chrono::milliseconds step) : step_(step) {}
  platform::WallTime now() const override { return {}; }
  platform::Uptime uptime() const override { return uptime_ += step_; }

 private:
  const std::chrono::milliseconds step_;
  mutable platform::Uptime uptime_{0};
};

class TurnBoundTest : public testing::Test {
 protected:
  void SetUp() override {
    if (toolkit_ == nullptr) GTEST_SKIP() << "no dbus-daemon here";
    toolkit_->reset(U"text", 1, 2);
  }

  FakeToolkit* toolkit_ = FakeToolkit::instance();
  simulated::VirtualTimeLoop loop_;
};

TEST_F(TurnBoundTest, WriteThatTheTurnHasNoTimeToSendIsNotTakenForOneThatIsUnconfirmed) {
  const auto writeWith = [this](std::chrono::milliseconds step) {
    const SlowClock clock(step);
    AccessibilityBus bus(loop_, clock);
    EXPECT_TRUE(bus.isAnswering());
    loop_.runUntil(loop_.uptime() + std::chrono::milliseconds(1));
    const auto error = TextAccess(bus).setSelectedText(toolkit_->field(), "mới");
    EXPECT_FALSE(bus.isSuspended(toolkit_->field().service));
    return error;
  };
  EXPECT_EQ(writeWith(std::chrono::milliseconds(26)), AXError::cannotComplete);
  EXPECT_EQ(toolkit_->calls("DeleteText"), 0) << "not enough time left to begin";
  EXPECT_EQ(writeWith(std::chrono::milliseconds(20)), AXError::failure);
  EXPECT_EQ(toolkit_->calls("DeleteText"), 1) << "time ran out after it";
  EXPECT_EQ(toolkit_->calls("InsertText"), 0);
}

/// Visits an element and all that is below it, as a search for a menu item does. Returns how many there are.
int visited(MenuAccess& menus, const AtspiElement& element, int depth = 0) {
  int count = 1;
  menus.title(element);
  const auto children = menus.children(element);
  if (!children || depth == 8) return count;
  for (const auto& child : *children) count += visited(menus, static_cast<AtspiElement&>(*child), depth + 1);
  return count;
}

TEST_F(TurnBoundTest, SearchOfMenusThatContainThemselvesEndsWithTheTurn) {
  const SlowClock clock(std::chrono::milliseconds(1));
  AccessibilityBus bus(loop_, clock);
  NoWindows windows;
  ApplicationDirectory directory(bus);
  FrameSearch frames(windows, directory, bus);
  MenuAccess menus(frames, bus);
  constexpr int width = 300;
  toolkit_->answerAlways("ChildCount", {propertyValue(width)});
  toolkit_->answerAlways("Name", {propertyValue("Menu")});
  toolkit_->answerAlways("GetChildren", {references(QList<ElementReference>(width, toolkit_->field()))});
  EXPECT_LT(visited(menus, AtspiElement(toolkit_->field())), 4000);

  AccessibilityBus next(loop_, loop_);
  ElementReader reader(next);
  const auto children = reader.children(std::vector(50, toolkit_->field()));
  EXPECT_EQ(children.size(), ElementReader::mostElements);
}

TEST(TurnBudgetTest, TurnWaitsNoLongerThanItsLimitAndTheNextOneAnew) {
  simulated::VirtualTimeLoop loop;
  TurnBudget budget(loop, loop);
  const auto wait = [&](double seconds) {
    const TurnBudget::Wait waiting(budget);
    loop.stall(platform::Seconds{seconds});
  };
  EXPECT_EQ(budget.allowance(), TurnBudget::callLimit);
  wait(0.125);
  EXPECT_EQ(budget.allowance(), std::chrono::milliseconds(175));
  wait(0.25);
  EXPECT_EQ(budget.allowance(), platform::Uptime::zero());
  // A nested run is a separate turn.
  const auto turn = budget.turn();
  loop.runUntil(loop.uptime() + std::chrono::milliseconds(1));
  EXPECT_EQ(budget.allowance(), TurnBudget::callLimit);
  EXPECT_NE(budget.turn(), turn);

  const TurnBudget::Wait work(budget);
  wait(0.125);
  loop.stall(platform::Seconds{0.0625});
  EXPECT_EQ(budget.allowance(), std::chrono::microseconds(112500))
      << "our own work counts, and nothing twice";
}

}  // namespace
}  // namespace tavelo::linuxdesktop
