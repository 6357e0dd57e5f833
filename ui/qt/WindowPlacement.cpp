#include "ui/qt/WindowPlacement.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <algorithm>

namespace tavelo {

ScreenLayout currentScreenLayout() {
  ScreenLayout layout;
  // Qt keeps the main screen at the front of its list.
  for (const QScreen* screen : QGuiApplication::screens()) {
    if (!screen->geometry().isEmpty()) {
      layout.screens.push_back({screen->geometry(), screen->availableGeometry()});
    }
  }
  layout.pointer = QCursor::pos();
  return layout;
}

std::optional<ScreenGeometry> screenWithPointer(const ScreenLayout& layout) {
  const auto found = std::ranges::find_if(
      layout.screens, [&](const ScreenGeometry& screen) { return screen.frame.contains(layout.pointer); });
  if (found != layout.screens.end()) return *found;
  if (!layout.screens.empty()) return layout.screens.front();
  return std::nullopt;
}

QPoint overlayPosition(const QRect& visibleFrame, QSize size, int margin) {
  const int left = visibleFrame.x();
  const int right = visibleFrame.x() + visibleFrame.width();
  const int centred = left + (visibleFrame.width() - size.width()) / 2;
  // The bound to the right comes last and wins; at the top, the bound is the place itself.
  const int x = std::min(std::max(centred, left + margin), right - size.width() - margin);
  return {x, visibleFrame.y() + margin};
}

QPoint centredPosition(const QRect& visibleFrame, QSize size) {
  const QSize free = visibleFrame.size() - size;
  return visibleFrame.topLeft() + QPoint{std::max(free.width() / 2, 0), std::max(free.height() / 3, 0)};
}

}  // namespace tavelo
