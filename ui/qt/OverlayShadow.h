#pragma once

#include <QWidget>

namespace tavelo {

/// The shadow around the overlay, for desktops with a compositor. A window of its own, so that the overlay
/// keeps its size and clicks on the shadow reach what lies beneath. Main thread.
class OverlayShadow final : public QWidget {
 public:
  OverlayShadow();

  /// Whether a window can be placed under another one; Wayland's cannot.
  static bool isPossible();

  /// Lies around `frame`, in screen coordinates.
  void surround(const QRect& frame);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace tavelo
