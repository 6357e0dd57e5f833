#include <gtest/gtest.h>

#include "platform/simulated/SimulatedDesktop.h"
#include "ui/qt/StatusAreaNotice.h"

namespace tavelo {
namespace {

TEST(StatusAreaNotice, ComesOnceAndOnlyWhereNoPanelHasTurnedUpInTime) {
  simulated::SimulatedDesktop desktop;
  bool hasStatusArea = false;
  announceMissingStatusArea([&] { return hasStatusArea; });
  desktop.advance(platform::Seconds{9.9});
  EXPECT_TRUE(desktop.notifications().posted().empty());
  desktop.advance(platform::Seconds{100});
  EXPECT_EQ(desktop.notifications().posted().size(), 1U);

  announceMissingStatusArea([&] { return hasStatusArea; });
  hasStatusArea = true;
  desktop.advance(platform::Seconds{100});
  EXPECT_EQ(desktop.notifications().posted().size(), 1U);
}

}  // namespace
}  // namespace tavelo
