#include "ui/qt/QtGeometry.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

namespace tavelo {
namespace {

Rectangle fromQt(const QRectF& frame) { return {frame.x(), frame.y(), frame.width(), frame.height()}; }

}  // namespace

ScreenLayout currentScreenLayout() {
  ScreenLayout layout;
  // Qt keeps the main screen at the front of its list.
  for (const QScreen* screen : QGuiApplication::screens()) {
    if (!screen->geometry().isEmpty()) {
      layout.screens.push_back({fromQt(screen->geometry()), fromQt(screen->availableGeometry())});
    }
  }
  const QPointF pointer = QCursor::pos();
  layout.pointer = {pointer.x(), pointer.y()};
  return layout;
}

}  // namespace tavelo
