#pragma once

#include <QApplication>

namespace tavelo {

/// The application object of a test program; made at the first call, so that listing the tests needs none.
inline QApplication& offscreenApplication() {
  static int count = 1;
  static char name[] = "tavelo-test";
  static char* arguments[] = {name, nullptr};
  // Kept to the end: Qt's own statics refer to it.
  static auto* application = [] {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return new QApplication(count, arguments);
  }();
  return *application;
}

}  // namespace tavelo
