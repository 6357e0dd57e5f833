#pragma once

#include <QLabel>
#include <QWidget>
#include <memory>

#include "platform/Workspace.h"

namespace tavelo {

class OverlayShadow;

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
/// never changes size, and its parent draws it. Main thread.
class OverlayLabel final : public QLabel {
 public:
  OverlayLabel(const QFont& font, Qt::Alignment alignment, Qt::TextElideMode truncation, QWidget* parent);

  /// Draws in the secondary label colour.
  void setSecondary(bool secondary);

  /// The part of the text that is drawn, with the ellipsis.
  QString visibleText() const;

  /// Draws the text where the view lies in its parent. Capitals with two marks rise above a line of this
  /// height; the view itself could not show what lies outside.
  void drawInParent(QPainter& painter) const;

 protected:
  void paintEvent(QPaintEvent*) override {}

 private:
  Qt::TextElideMode truncation_;
  bool secondary_ = false;
};

/// The overlay's window: a rounded body that floats above all others and never takes the focus. Clicks on it
/// do nothing. It has a shadow where a compositor runs. Main thread.
class OverlayPanel final : public QWidget {
 public:
  explicit OverlayPanel(platform::Workspace& workspace);
  ~OverlayPanel() override;

  /// Whether the second line shows all of `detail`.
  bool hasRoomFor(const QString& detail) const;

  /// Sets what the overlay says. Also asks whether windows may be translucent now: if so, the corners are
  /// rounded by translucency, otherwise by a mask.
  void setContent(const QString& title, const QString& detail, bool active);

  /// Shows the panel and its shadow above all other windows.
  void showOnTop();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  bool isTranslucent() const { return mask().isEmpty(); }

  platform::Workspace& workspace_;
  /// A window of its own, which lets clicks through.
  std::unique_ptr<OverlayShadow> shadow_;
  /// Children of the panel.
  RecordingDotView* dotView_;
  OverlayLabel* titleLabel_;
  OverlayLabel* detailLabel_;
};

}  // namespace tavelo
