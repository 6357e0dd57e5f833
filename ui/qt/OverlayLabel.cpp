#include "ui/qt/OverlayLabel.h"

#include <QFontMetrics>
#include <QPainter>

#include "ui/qt/SystemAppearance.h"

namespace tavelo {
namespace {

/// Far more than fits. A single character can be millions of marks long, and laying those out takes seconds.
constexpr qsizetype longestDrawn = 1000;

}  // namespace

OverlayLabel::OverlayLabel(const QFont& font, Qt::Alignment alignment, Qt::TextElideMode truncation,
                           QWidget* parent)
    : QLabel(parent), truncation_(truncation) {
  setFont(font);
  setTextFormat(Qt::PlainText);
  // Absolute: text that runs from right to left stands on the same side.
  setAlignment(alignment | Qt::AlignAbsolute | Qt::AlignVCenter);
}

void OverlayLabel::setSecondary(bool secondary) {
  secondary_ = secondary;
  update();
}

QString OverlayLabel::visibleText() const {
  const QString whole = text();
  const QString kept = truncation_ == Qt::ElideLeft ? whole.right(longestDrawn) : whole.left(longestDrawn);
  return QFontMetrics(font()).elidedText(kept, truncation_, width());
}

void OverlayLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(secondary_ ? secondaryLabel(palette()) : palette().color(QPalette::WindowText));
  // The line's own direction, so that the ellipsis stands where its reader expects it.
  painter.setLayoutDirection(text().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
  painter.drawText(rect(), static_cast<int>(alignment()) | Qt::TextSingleLine, visibleText());
}

}  // namespace tavelo
