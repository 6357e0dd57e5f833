#pragma once

#include <QLabel>
#include <QWidget>

#include "platform/Workspace.h"

namespace tavelo {

/// The overlay's status dot: a disc, red while active, else green. Main thread.
class RecordingDotView final : public QWidget {
 public:
  using QWidget::QWidget;

  bool isActive() const { return isActive_; }
  void setActive(bool active);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool isActive_ = true;
};

/// One line of plain text, cut to its width with an ellipsis on the side that `truncation` names. The view
/// never changes size. Main thread.
class OverlayLabel final : public QLabel {
 public:
  OverlayLabel(const QFont& font, Qt::Alignment alignment, Qt::TextElideMode truncation, QWidget* parent);

  /// Draws in the secondary label colour.
  void setSecondary(bool secondary);

  /// The part of the text that is drawn, with the ellipsis.
  QString visibleText() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Qt::TextElideMode truncation_;
  bool secondary_ = false;
};

/// The overlay's window: a rounded body that floats above all others and never takes the focus. Clicks on it
/// do nothing. Main thread.
class OverlayPanel final : public QWidget {
 public:
  explicit OverlayPanel(platform::Workspace& workspace);

  /// Whether the second line shows all of `detail`.
  bool hasRoomFor(const QString& detail) const;

  /// Sets what the overlay says. Also asks whether windows may be translucent now: if so, the corners are
  /// rounded by translucency, otherwise by a mask.
  void setContent(const QString& title, const QString& detail, bool active);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  platform::Workspace& workspace_;
  /// Children of the panel.
  RecordingDotView* dotView_;
  OverlayLabel* titleLabel_;
  OverlayLabel* detailLabel_;
};

}  // namespace tavelo
