#pragma once

#include <QLabel>
#include <QString>
#include <QWidget>

#include "ui/qt/setup/SetupLines.h"

class QAbstractButton;
class QHBoxLayout;
class QPushButton;
class QVBoxLayout;

namespace tavelo {

/// A disc that is green with a tick, or not yet. Main thread.
class StatusMark final : public QWidget {
 public:
  /// `subject` is what it is the mark of, for those who do not see it.
  StatusMark(QString subject, QWidget* parent);

  void show(Mark mark);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const QString subject_;
  Mark mark_ = Mark::missing;
};

/// One line of the set-up window: its mark, its name, one sentence about its state, and below them whatever
/// controls it has. Main thread.
class SetupRow : public QWidget {
 public:
  SetupRow(const char* name, QWidget* parent);

  void showLine(const LineState& line);

 protected:
  /// Where the controls go.
  QVBoxLayout& body() { return *body_; }
  /// A row of controls, from the left.
  QHBoxLayout* addControls();
  QPushButton* addButton(QHBoxLayout* controls, const char* text);
  /// A paragraph that wraps, and can be marked and copied.
  QLabel* addParagraph(const QString& text = {});

  /// Says that a variable of the environment decides in place of this line's controls, if one does.
  void explainVariable(const std::string& variable);

 private:
  StatusMark* mark_;
  QLabel* state_;
  QVBoxLayout* body_;
};

/// A label that wraps its text and never reads it as markup.
QLabel* makeParagraph(const QString& text, QWidget* parent);

/// The name of a control for those who do not see it: its text without the mark of its key.
QString accessibleNameOf(const char* text);

}  // namespace tavelo
