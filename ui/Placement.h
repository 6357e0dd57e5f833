#pragma once

#include <optional>
#include <vector>

#include "ui/Measures.h"

// Where windows and their views go. Any thread.
namespace tavelo {

/// A screen in the desktop's coordinates: all of it, and what panels and docks leave free.
struct ScreenGeometry {
  Rectangle frame;
  Rectangle visibleFrame;
};

/// The attached screens, and where the pointer is. The main screen is the first one unless `mainScreen` says
/// otherwise.
struct ScreenLayout {
  std::vector<ScreenGeometry> screens;
  Point pointer;
  std::optional<ScreenGeometry> mainScreen{};
};

/// The first screen with the pointer on it, else the main one; absent when there is none.
std::optional<ScreenGeometry> screenWithPointer(const ScreenLayout& layout);

/// The overlay's upper left corner: top centre, with a margin to the edges of the free area. If the area is
/// too small for both side margins, only the right one is kept.
Point overlayPosition(const Rectangle& visibleFrame);

/// Where the overlay's views lie within it.
struct OverlayFrames {
  Rectangle dot;
  Rectangle title;
  Rectangle detail;
};
/// `titleHeight` is the height of a line in the title's font.
OverlayFrames overlayFrames(double titleHeight);

/// The same frame in coordinates that grow upwards from the lower edge of a container, as AppKit's do; and
/// back.
constexpr Rectangle flipped(const Rectangle& frame, double containerHeight) {
  return {frame.x, containerHeight - frame.y - frame.height, frame.width, frame.height};
}

/// The upper left corner of a window of `size`, centred and somewhat above the middle. If the area is too
/// small, the title bar stays within reach.
Point centredPosition(const Rectangle& visibleFrame, Size size);

}  // namespace tavelo
