#pragma once

#include <QApplication>

namespace tavelo {

/// The application object of a test program. Made at the first call, so that listing the tests does not need
/// it.
inline QApplication& offscreenApplication() {
  static int count = 1;
  static char name[] = "tavelo-test";
  static char* arguments[] = {name, nullptr};
  // Never deleted, because Qt's own statics refer to it.
  static auto* application = [] {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return new QApplication(count, arguments);
  }();
  return *application;
}

}  // namespace tavelo
