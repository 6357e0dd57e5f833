#pragma once

#include <QApplication>
#include <QWidget>

#include <gtest/gtest.h>

namespace tavelo {

/// The window of that name, visible or hidden; fails the test if there is none.
template <class Window = QWidget>
Window* windowNamed(const QString& name) {
  for (QWidget* each : QApplication::topLevelWidgets()) {
    if (each->objectName() == name) return dynamic_cast<Window*>(each);
  }
  ADD_FAILURE() << "no window " << name.toStdString();
  return nullptr;
}

}  // namespace tavelo
