#pragma once

#include <QPoint>
#include <QRect>
#include <optional>
#include <vector>

namespace tavelo {

/// A screen in the desktop's coordinates, which grow downwards: all of it, and what panels and docks leave
/// free.
struct ScreenGeometry {
  QRect frame;
  QRect visibleFrame;
};

/// The screens that there are, the main one first, and where the pointer is.
struct ScreenLayout {
  std::vector<ScreenGeometry> screens;
  QPoint pointer;
};

/// The layout now. Screens without an extent, which stand in where none is attached, are left out. Main
/// thread.
ScreenLayout currentScreenLayout();

/// The screen with the pointer on it, else the main one; absent when there is none. Any thread.
std::optional<ScreenGeometry> screenWithPointer(const ScreenLayout& layout);

/// Where the overlay's upper left corner goes: top centre, `margin` away from the edges of the free area.
/// When the area is too small for both margins, that to the right and that at the top are kept. Any thread.
QPoint overlayPosition(const QRect& visibleFrame, QSize size, int margin);

/// Where a window of `size` goes to stand in the middle and somewhat above it. Its title bar stays within
/// reach when the area is too small. Any thread.
QPoint centredPosition(const QRect& visibleFrame, QSize size);

}  // namespace tavelo
