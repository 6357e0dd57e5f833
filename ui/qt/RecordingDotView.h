#pragma once

#include <QWidget>

namespace tavelo {

/// The overlay's status dot: a disc, red while active, else green, 2 points within its bounds. Main thread.
class RecordingDotView final : public QWidget {
 public:
  explicit RecordingDotView(QWidget* parent = nullptr);

  bool isActive() const { return isActive_; }
  /// Draws the dot anew, also when nothing changed.
  void setActive(bool active);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool isActive_ = true;
};

}  // namespace tavelo
