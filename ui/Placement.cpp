#include "ui/Placement.h"

#include <algorithm>

namespace tavelo {
namespace {

constexpr int sideInset = 12;
constexpr int dotSize = 10;
constexpr int dotSpacing = 9;
constexpr int titleTop = 9;
constexpr int lineSpacing = 3;
constexpr int detailHeight = 13;

bool contains(const Rectangle& frame, Point point) {
  return point.x >= frame.x && point.x < frame.x + frame.width && point.y >= frame.y &&
         point.y < frame.y + frame.height;
}

}  // namespace

std::optional<ScreenGeometry> screenWithPointer(const ScreenLayout& layout) {
  for (const ScreenGeometry& screen : layout.screens) {
    if (contains(screen.frame, layout.pointer)) return screen;
  }
  if (!layout.screens.empty()) return layout.screens.front();
  return std::nullopt;
}

Point overlayPosition(const Rectangle& visibleFrame) {
  constexpr int margin = measures::screenMargin;
  constexpr int width = measures::compactSize.width;
  const int leftmost = visibleFrame.x + margin;
  const int rightmost = visibleFrame.x + visibleFrame.width - width - margin;
  const int centred = visibleFrame.x + (visibleFrame.width - width) / 2;
  return {std::min(std::max(centred, leftmost), rightmost), visibleFrame.y + margin};
}

OverlayFrames overlayFrames(int titleHeight) {
  const auto [width, height] = measures::compactSize;
  const int left = sideInset + dotSize + dotSpacing;
  const int lineWidth = width - left - sideInset;
  return {{sideInset, (height - dotSize) / 2, dotSize, dotSize},
          {left, titleTop, lineWidth, titleHeight},
          {left, titleTop + titleHeight + lineSpacing, lineWidth, detailHeight}};
}

Point centredPosition(const Rectangle& visibleFrame, Size size) {
  const int freeWidth = visibleFrame.width - size.width;
  const int freeHeight = visibleFrame.height - size.height;
  return {visibleFrame.x + std::max(freeWidth / 2, 0), visibleFrame.y + std::max(freeHeight / 3, 0)};
}

}  // namespace tavelo
