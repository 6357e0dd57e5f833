#include "ui/qt/OverlayShadow.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>

#include "ui/Measures.h"

namespace tavelo {
namespace {

constexpr int reach = measures::overlayShadowReach;
constexpr int drop = measures::overlayShadowDrop;
/// At the body's edge.
constexpr double darkness = 0.3;

QPainterPath rounded(const QRectF& frame, int radius) {
  QPainterPath path;
  path.addRoundedRect(frame, radius, radius);
  return path;
}

}  // namespace

// The flags are the overlay's, for the same reasons.
OverlayShadow::OverlayShadow()
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                           Qt::WindowDoesNotAcceptFocus | Qt::BypassWindowManagerHint |
                           Qt::WindowTransparentForInput) {
  setObjectName("overlay.shadow");
  setAttribute(Qt::WA_ShowWithoutActivating);
  setAttribute(Qt::WA_TranslucentBackground);
  setFocusPolicy(Qt::NoFocus);
}

bool OverlayShadow::isPossible() { return !QGuiApplication::platformName().startsWith("wayland"); }

void OverlayShadow::surround(const QRect& frame) {
  setGeometry(frame.adjusted(-reach, -reach, reach, reach + drop));
}

void OverlayShadow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF body = QRectF(rect()).adjusted(reach, reach, -reach, -reach - drop);
  QPainterPath outside;
  outside.addRect(rect());
  // The body is translucent, so nothing may lie under it.
  painter.setClipPath(outside.subtracted(rounded(body, measures::overlayCornerRadius)));
  // Layers of growing size add up to a shadow that fades; the outer ones are fainter.
  for (int layer = 1; layer <= reach; ++layer) {
    const double share = 2.0 * (reach + 1 - layer) / (reach * (reach + 1));
    const QRectF frame = body.translated(0, drop).adjusted(-layer, -layer, layer, layer);
    painter.fillPath(rounded(frame, measures::overlayCornerRadius + layer),
                     QColor::fromRgbF(0, 0, 0, float(darkness * share)));
  }
}

}  // namespace tavelo
