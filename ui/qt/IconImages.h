#pragma once

#include <QIcon>
#include <QPixmap>
#include <optional>
#include <string>

namespace tavelo {

/// One icon with all pictures in an icns file that Qt can read, and the largest of them scaled to 18 × 18
/// points. Absent if Qt can read none. Main thread.
std::optional<QIcon> iconFromIcns(const std::string& data);

/// The letters on a tile that stands out on light and dark panels. Main thread.
QIcon letterIcon(const QString& letters);

/// The picture, scaled in proportion to fit `size` points and cut to a circle; absent if Qt cannot read it.
/// Main thread.
std::optional<QPixmap> roundPicture(const std::string& data, int size, double pixelsPerPoint);

}  // namespace tavelo
