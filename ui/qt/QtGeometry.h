#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <cmath>

#include "ui/Placement.h"

namespace tavelo {

/// The whole points at or before these: windows of this toolkit lie on whole ones.
inline QPoint toQt(Point point) {
  return {static_cast<int>(std::floor(point.x)), static_cast<int>(std::floor(point.y))};
}
inline QSize toQt(Size size) { return {static_cast<int>(size.width), static_cast<int>(size.height)}; }
inline QRect toQt(const Rectangle& frame) {
  return {toQt(Point{frame.x, frame.y}), toQt(Size{frame.width, frame.height})};
}

/// The screens and the pointer now. Leaves out the empty screen that Qt reports while none is attached. Main
/// thread.
ScreenLayout currentScreenLayout();

}  // namespace tavelo
