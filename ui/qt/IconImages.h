#pragma once

#include <QIcon>
#include <QPixmap>
#include <optional>
#include <string>

namespace tavelo {

/// The pictures in an icns file as one icon, and one of 18 × 18 points, drawn in their own colours. Absent
/// when there is no picture in it that Qt can read. Main thread.
std::optional<QIcon> iconFromIcns(const std::string& data);

/// Up to four letters on a tile that stands out on light and dark panels. Main thread.
QIcon letterIcon(const QString& letters);

/// The picture, scaled in proportion to fit `size` points and cut to a circle; absent when Qt cannot read it.
/// Main thread.
std::optional<QPixmap> roundPicture(const std::string& data, int size, double pixelsPerPoint);

}  // namespace tavelo
