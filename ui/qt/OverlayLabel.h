#pragma once

#include <QLabel>

namespace tavelo {

/// One line of plain text that is cut to its width, with an ellipsis at the end that `truncation` names. The
/// line itself never changes size. Main thread.
class OverlayLabel final : public QLabel {
 public:
  OverlayLabel(const QFont& font, Qt::Alignment alignment, Qt::TextElideMode truncation, QWidget* parent);

  /// Draws in the secondary label colour.
  void setSecondary(bool secondary);

  /// What is drawn of the text.
  QString visibleText() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Qt::TextElideMode truncation_;
  bool secondary_ = false;
};

}  // namespace tavelo
