#pragma once

#include "platform/Time.h"

namespace tavelo {

/// Lengths and positions are in points, which may be fractions: a screen of an odd width has its middle
/// between two of them.
struct Point {
  double x = 0;
  double y = 0;
  bool operator==(const Point&) const = default;
};

struct Size {
  double width = 0;
  double height = 0;
};

/// `x` and `y` are its upper left corner: coordinates grow downwards, which AppKit's do not.
struct Rectangle {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
  bool operator==(const Rectangle&) const = default;
};

/// Sizes, distances and delays that the windows of every desktop share. Lengths are in points.
namespace measures {

// The overlay. It has one size, the compact one.
inline constexpr Size compactSize{220, 56};
/// Between the overlay and the edges of the screen's free area.
inline constexpr int screenMargin = 40;
inline constexpr int overlayCornerRadius = 10;
inline constexpr double overlayTitleFont = 12;
inline constexpr double overlayDetailFont = 10;
/// How far the shadow reaches beyond the overlay, and how far it lies below it.
inline constexpr int overlayShadowReach = 14;
inline constexpr int overlayShadowDrop = 4;
/// Between the overlay's edges and what lies beside them: the dot at the left, the two lines at the right.
inline constexpr int overlaySideInset = 12;
inline constexpr int overlayDotSize = 10;
/// Between the dot and the lines.
inline constexpr int overlayDotSpacing = 9;
inline constexpr int overlayTitleTop = 9;
inline constexpr int overlayLineSpacing = 3;
inline constexpr int overlayDetailHeight = 13;
/// Between the dot's frame and its disc.
inline constexpr int overlayDotInset = 2;
/// How long the overlay stays after an insertion.
inline constexpr platform::Seconds insertedDuration{0.9};

// The status item.
inline constexpr int statusIconSize = 18;
/// A panel may start after the program at log-in; only then is a missing status area reported.
inline constexpr platform::Seconds statusAreaPatience{10.0};

// The review window.
inline constexpr Size reviewSize{560, 280};
inline constexpr int reviewInset = 16;
inline constexpr int reviewRowSpacing = 12;
inline constexpr int reviewButtonSpacing = 8;
inline constexpr int reviewTextInset = 10;
inline constexpr double reviewFont = 16;

// The About panel: what lies below its text, and where.
inline constexpr Size aboutAccessorySize{320, 158};
inline constexpr Rectangle aboutPortraitFrame{136, 14, 48, 48};
inline constexpr Rectangle aboutMakerFrame{0, 66, 320, 58};
inline constexpr Rectangle aboutLinkFrame{0, 134, 320, 24};
inline constexpr double aboutMakerFont = 13.5;
inline constexpr double aboutLinkFont = 14;

}  // namespace measures

}  // namespace tavelo
