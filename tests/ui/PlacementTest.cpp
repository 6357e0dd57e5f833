#include <ostream>

#include <gtest/gtest.h>

#include "ui/Placement.h"

namespace tavelo {

/// For the messages of failed tests.
void PrintTo(const Point& point, std::ostream* out) { *out << point.x << "," << point.y; }

namespace {

TEST(OverlayPosition, IsTheTopCentreBelowThePanel) {
  EXPECT_EQ(overlayPosition({0, 0, 1280, 900}), (Point{530, 40}));
  EXPECT_EQ(overlayPosition({0, 30, 1280, 870}), (Point{530, 70}));
  EXPECT_EQ(overlayPosition({-1920, -200, 1920, 1080}), (Point{-1070, -160}));
  EXPECT_EQ(overlayPosition({1280, 0, 3840, 2160}), (Point{3090, 40}));
  EXPECT_EQ(overlayPosition({0, 25, 1447, 875}), (Point{613.5, 65})) << "an odd width";
}

TEST(OverlayPosition, KeepsTheRightAndTheTopMarginOnAScreenThatIsTooSmall) {
  EXPECT_EQ(overlayPosition({0, 0, 300, 136}), (Point{40, 40})) << "both margins just fit";
  EXPECT_EQ(overlayPosition({0, 0, 299, 135}), (Point{39, 40}));
  EXPECT_EQ(overlayPosition({100, 50, 200, 20}), (Point{40, 90}))
      << "beyond the left edge to keep the right margin";
  EXPECT_EQ(overlayPosition({0, 0, 0, 0}), (Point{-260, 40}));
}

TEST(ScreenWithPointer, IsTheFirstWhoseWholeFrameHoldsThePointerElseTheMainOne) {
  const ScreenGeometry main{{0, 0, 1280, 900}, {0, 30, 1280, 870}};
  const ScreenGeometry second{{1280, 0, 800, 600}, {1280, 0, 800, 600}};
  const auto chosen = [&](Point pointer) { return screenWithPointer({{main, second}, pointer})->frame; };
  EXPECT_EQ(chosen({1279, 5}), main.frame) << "on the panel, outside the free area";
  EXPECT_EQ(chosen({1280, 5}), second.frame);
  EXPECT_EQ(chosen({1280, 600}), main.frame) << "on no screen";
  EXPECT_EQ(screenWithPointer({{second, main}, {5, 5000}, main})->frame, main.frame) << "not the first one";
  EXPECT_EQ(screenWithPointer({{second, main}, {1280, 5}, main})->frame, second.frame);
  EXPECT_FALSE(screenWithPointer({{}, {3, 3}}));
}

TEST(CentredPosition, IsAboveTheMiddleAndKeepsTheTitleBarWithinReach) {
  EXPECT_EQ(centredPosition({0, 30, 1280, 870}, {560, 300}), (Point{360, 220}));
  EXPECT_EQ(centredPosition({100, 50, 400, 200}, {560, 300}), (Point{100, 50}));
}

}  // namespace
}  // namespace tavelo
