#include "ui/qt/RecordingDotView.h"

#include <QPainter>

#include "ui/qt/SystemAppearance.h"

namespace tavelo {

RecordingDotView::RecordingDotView(QWidget* parent) : QWidget(parent) {}

void RecordingDotView::setActive(bool active) {
  isActive_ = active;
  update();
}

void RecordingDotView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(isActive_ ? systemRed(palette()) : systemGreen(palette()));
  painter.drawEllipse(QRectF(rect()).adjusted(2, 2, -2, -2));
}

}  // namespace tavelo
