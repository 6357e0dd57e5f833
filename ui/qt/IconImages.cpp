#include "ui/qt/IconImages.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <string_view>

#include "ui/Measures.h"
#include "ui/qt/SystemAppearance.h"

namespace tavelo {
namespace {

using measures::statusIconSize;

std::size_t bigEndian(std::string_view fourBytes) {
  std::size_t number = 0;
  for (const char byte : fourBytes) number = number << 8U | static_cast<unsigned char>(byte);
  return number;
}

QImage imageFromData(std::string_view data) {
  return QImage::fromData(reinterpret_cast<const uchar*>(data.data()), static_cast<int>(data.size()));
}

}  // namespace

std::optional<QIcon> iconFromIcns(const std::string& data) {
  // An icns file is a sequence of blocks within one outer block. A block's head is its type and its length,
  // of four bytes each; the length includes the head.
  constexpr std::size_t head = 8;
  std::string_view left = data;
  if (!left.starts_with("icns") || left.size() < head) return std::nullopt;
  left.remove_prefix(head);
  QIcon icon;
  QImage largest;
  while (left.size() > head) {
    const std::size_t length = bigEndian(left.substr(4, 4));
    if (length <= head || length > left.size()) break;
    const QImage image = imageFromData(left.substr(head, length - head));
    if (!image.isNull()) icon.addPixmap(QPixmap::fromImage(image));
    if (image.width() > largest.width()) largest = image;
    left.remove_prefix(length);
  }
  if (largest.isNull()) return std::nullopt;
  icon.addPixmap(QPixmap::fromImage(
      largest.scaled(statusIconSize, statusIconSize, Qt::KeepAspectRatio, Qt::SmoothTransformation)));
  return icon;
}

QIcon letterIcon(const QString& letters) {
  QIcon icon;
  for (const int size : {statusIconSize, 22, 32, 64}) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x0b7a93));
    painter.drawRoundedRect(QRectF(pixmap.rect()), size / 5.0, size / 5.0);
    painter.setPen(Qt::white);
    QFont font = systemFont(1, QFont::Bold);
    font.setPixelSize(size * 2 / 3);
    painter.setFont(font);
    painter.drawText(pixmap.rect(), Qt::AlignCenter, letters);
    painter.end();
    icon.addPixmap(pixmap);
  }
  return icon;
}

std::optional<QPixmap> roundPicture(const std::string& data, int size, double pixelsPerPoint) {
  const QImage image = imageFromData(data);
  if (image.isNull()) return std::nullopt;
  const QSize pixels = QSizeF(size * pixelsPerPoint, size * pixelsPerPoint).toSize();
  const QImage scaled = image.scaled(pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  QPixmap pixmap(pixels);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath circle;
  circle.addEllipse(QRectF({}, pixels));
  painter.setClipPath(circle);
  painter.drawImage((pixels.width() - scaled.width()) / 2, (pixels.height() - scaled.height()) / 2, scaled);
  painter.end();
  pixmap.setDevicePixelRatio(pixelsPerPoint);
  return pixmap;
}

}  // namespace tavelo
