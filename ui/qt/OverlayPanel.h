#pragma once

#include <QWidget>

#include "platform/Workspace.h"

namespace tavelo {

/// The overlay's window: a rounded body that floats above all others, never takes the focus and keeps clicks
/// to itself. Main thread.
class OverlayPanel final : public QWidget {
 public:
  explicit OverlayPanel(QSize size, platform::Workspace& workspace);

  /// Rounds the corners by translucency where windows may be translucent, else by a mask.
  void updateShape();

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  platform::Workspace& workspace_;
};

}  // namespace tavelo
