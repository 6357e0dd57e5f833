#pragma once

#include <QWidget>

namespace tavelo {

/// The overlay's window: a rounded body that floats above all others, never takes the focus and keeps clicks
/// to itself. Main thread.
class OverlayPanel final : public QWidget {
 public:
  explicit OverlayPanel(QSize size);

  /// Rounds the corners by translucency where a compositor runs, else by a mask.
  void updateShape();

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace tavelo
