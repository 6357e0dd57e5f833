#include "ui/qt/QtGeometry.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

namespace tavelo {
namespace {

Rectangle fromQt(const QRect& frame) { return {frame.x(), frame.y(), frame.width(), frame.height()}; }

}  // namespace

ScreenLayout currentScreenLayout() {
  ScreenLayout layout;
  // Qt keeps the main screen at the front of its list.
  for (const QScreen* screen : QGuiApplication::screens()) {
    if (!screen->geometry().isEmpty()) {
      layout.screens.push_back({fromQt(screen->geometry()), fromQt(screen->availableGeometry())});
    }
  }
  layout.pointer = {QCursor::pos().x(), QCursor::pos().y()};
  return layout;
}

}  // namespace tavelo
