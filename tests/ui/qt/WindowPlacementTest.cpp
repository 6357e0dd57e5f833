#include <gtest/gtest.h>

#include "ui/qt/WindowPlacement.h"

namespace tavelo {

/// For the messages of failed tests.
void PrintTo(const QPoint& point, std::ostream* out) { *out << point.x() << "," << point.y(); }

namespace {

constexpr QSize overlay{220, 56};

QPoint placed(QRect visible) { return overlayPosition(visible, overlay, 40); }

TEST(OverlayPosition, IsTheTopCentreBelowThePanel) {
  EXPECT_EQ(placed({0, 0, 1280, 900}), QPoint(530, 40));
  EXPECT_EQ(placed({0, 30, 1280, 870}), QPoint(530, 70));
  EXPECT_EQ(placed({-1920, -200, 1920, 1080}), QPoint(-1070, -160));
  EXPECT_EQ(placed({1280, 0, 3840, 2160}), QPoint(3090, 40));
}

TEST(OverlayPosition, KeepsTheRightAndTheTopMarginOnAScreenThatIsTooSmall) {
  EXPECT_EQ(placed({0, 0, 300, 136}), QPoint(40, 40)) << "both margins just fit";
  EXPECT_EQ(placed({0, 0, 299, 135}), QPoint(39, 40));
  EXPECT_EQ(placed({100, 50, 200, 20}), QPoint(40, 90)) << "out of the screen on the left, as the right wins";
  EXPECT_EQ(placed({0, 0, 0, 0}), QPoint(-260, 40));
}

TEST(ScreenWithPointer, IsTheFirstWhoseWholeFrameHoldsThePointerElseTheMainOne) {
  const ScreenGeometry main{{0, 0, 1280, 900}, {0, 30, 1280, 870}};
  const ScreenGeometry second{{1280, 0, 800, 600}, {1280, 0, 800, 600}};
  const auto chosen = [&](QPoint pointer) { return screenWithPointer({{main, second}, pointer})->frame; };
  EXPECT_EQ(chosen({1279, 5}), main.frame) << "on the panel, which the free area leaves out";
  EXPECT_EQ(chosen({1280, 5}), second.frame);
  EXPECT_EQ(chosen({1280, 600}), main.frame) << "beside every screen";
  EXPECT_FALSE(screenWithPointer({{}, {3, 3}}));
}

TEST(CentredPosition, IsAboveTheMiddleAndKeepsTheTitleBarWithinReach) {
  EXPECT_EQ(centredPosition({0, 30, 1280, 870}, {560, 300}), QPoint(360, 220));
  EXPECT_EQ(centredPosition({100, 50, 400, 200}, {560, 300}), QPoint(100, 50));
}

}  // namespace
}  // namespace tavelo
