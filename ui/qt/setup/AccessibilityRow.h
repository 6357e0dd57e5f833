#pragma once

#include <QTimer>

#include "ui/qt/setup/SetupRow.h"

namespace tavelo {

/// The line of accessibility, with the button that switches it on. Main thread.
class AccessibilityRow final : public SetupRow {
 public:
  /// `desktop` must outlive this object.
  AccessibilityRow(const SetupDesktop& desktop, QWidget* parent);

 private:
  void refresh();

  const SetupDesktop& desktop_;
  QPushButton* button_;
  QTimer timer_;
};

}  // namespace tavelo
