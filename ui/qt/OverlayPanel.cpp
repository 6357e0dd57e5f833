#include "ui/qt/OverlayPanel.h"

#include <QBitmap>
#include <QEvent>
#include <QPainter>

#include "ui/qt/SystemAppearance.h"

namespace tavelo {
namespace {

constexpr int cornerRadius = 10;

QBitmap roundedMask(QSize size) {
  QBitmap mask(size);
  mask.clear();
  QPainter painter(&mask);
  painter.setPen(Qt::color1);
  painter.setBrush(Qt::color1);
  painter.drawRoundedRect(QRect({}, size).adjusted(0, 0, -1, -1), cornerRadius, cornerRadius);
  return mask;
}

}  // namespace

OverlayPanel::OverlayPanel(QSize size, platform::Workspace& workspace)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                           Qt::WindowDoesNotAcceptFocus | Qt::BypassWindowManagerHint),
      workspace_(workspace) {
  // X11 window managers keep what they manage on one workspace, below full-screen windows and in the taskbar.
  setAttribute(Qt::WA_ShowWithoutActivating);
  setAttribute(Qt::WA_TranslucentBackground);
  setFocusPolicy(Qt::NoFocus);
  setFixedSize(size);
}

void OverlayPanel::updateShape() {
  if (workspace_.windowsMayBeTranslucent()) {
    clearMask();
  } else if (mask().isEmpty()) {
    setMask(roundedMask(size()));
  }
  update();
}

bool OverlayPanel::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
      event->accept();
      return true;
    default:
      return QWidget::event(event);
  }
}

void OverlayPanel::paintEvent(QPaintEvent*) {
  const bool rounded = mask().isEmpty();
  QColor body = palette().color(QPalette::Window);
  QColor edge = palette().color(QPalette::WindowText);
  edge.setAlphaF(0.18F);
  if (rounded) body.setAlphaF(0.94F);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  painter.setPen(QPen(edge, 1));
  painter.setBrush(body);
  // A masked window shows what lies outside its body as black, so it is filled to the edge.
  if (!rounded) painter.fillRect(rect(), body);
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius, cornerRadius);
}

}  // namespace tavelo
