#include "ui/Placement.h"

#include <algorithm>

namespace tavelo {
namespace {

bool contains(const Rectangle& frame, Point point) {
  return point.x >= frame.x && point.x < frame.x + frame.width && point.y >= frame.y &&
         point.y < frame.y + frame.height;
}

}  // namespace

std::optional<ScreenGeometry> screenWithPointer(const ScreenLayout& layout) {
  for (const ScreenGeometry& screen : layout.screens) {
    if (contains(screen.frame, layout.pointer)) return screen;
  }
  if (layout.mainScreen || layout.screens.empty()) return layout.mainScreen;
  return layout.screens.front();
}

Point overlayPosition(const Rectangle& visibleFrame) {
  constexpr double margin = measures::screenMargin;
  constexpr double width = measures::compactSize.width;
  const double leftmost = visibleFrame.x + margin;
  const double rightmost = visibleFrame.x + visibleFrame.width - width - margin;
  const double centred = visibleFrame.x + (visibleFrame.width - width) / 2;
  return {std::min(std::max(centred, leftmost), rightmost), visibleFrame.y + margin};
}

OverlayFrames overlayFrames(double titleHeight) {
  constexpr double dot = measures::overlayDotSize;
  constexpr double inset = measures::overlaySideInset;
  constexpr double left = inset + dot + measures::overlayDotSpacing;
  constexpr double top = measures::overlayTitleTop;
  const auto [width, height] = measures::compactSize;
  const double lineWidth = width - left - inset;
  const double detailTop = top + titleHeight + measures::overlayLineSpacing;
  return {{inset, (height - dot) / 2, dot, dot},
          {left, top, lineWidth, titleHeight},
          {left, detailTop, lineWidth, measures::overlayDetailHeight}};
}

Point centredPosition(const Rectangle& visibleFrame, Size size) {
  const double freeWidth = visibleFrame.width - size.width;
  const double freeHeight = visibleFrame.height - size.height;
  return {visibleFrame.x + std::max(freeWidth / 2, 0.0), visibleFrame.y + std::max(freeHeight / 3, 0.0)};
}

}  // namespace tavelo
