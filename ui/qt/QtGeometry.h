#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

#include "ui/Placement.h"

namespace tavelo {

inline QPoint toQt(Point point) { return {point.x, point.y}; }
inline QSize toQt(Size size) { return {size.width, size.height}; }
inline QRect toQt(const Rectangle& frame) { return {frame.x, frame.y, frame.width, frame.height}; }

/// The screens and the pointer now. Leaves out the empty screen that Qt reports while none is attached. Main
/// thread.
ScreenLayout currentScreenLayout();

}  // namespace tavelo
