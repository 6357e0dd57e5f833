#include "ui/qt/SystemAppearance.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QPalette>
#include <QScreen>

namespace tavelo {
namespace {

bool isDark(const QPalette& palette) {
  return palette.color(QPalette::Window).lightnessF() < palette.color(QPalette::WindowText).lightnessF();
}

}  // namespace

QFont systemFont(double size, QFont::Weight weight) {
  QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
  // Qt takes whole pixels only, but fractions of points.
  const QScreen* screen = QGuiApplication::primaryScreen();
  const double dotsPerInch = screen != nullptr ? screen->logicalDotsPerInchY() : 96;
  font.setPointSizeF(size * 72 / dotsPerInch);
  font.setWeight(weight);
  return font;
}

QColor systemRed(const QPalette& palette) { return isDark(palette) ? 0xff453a : 0xe0342b; }
QColor systemGreen(const QPalette& palette) { return isDark(palette) ? 0x30d158 : 0x249d43; }
QColor systemBlue(const QPalette& palette) { return isDark(palette) ? 0x5eaaff : 0x0a63d1; }

QColor secondaryLabel(const QPalette& palette) {
  QColor color = palette.color(QPalette::WindowText);
  color.setAlphaF(0.7F);
  return color;
}

}  // namespace tavelo
