#include "ui/qt/setup/KeyRow.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>

#include "ui/qt/setup/FilledText.h"
#include "ui/qt/setup/SetupTexts.h"

namespace tavelo {

KeyRow::KeyRow(const SetupDesktop& desktop, QWidget* parent)
    : SetupRow(setuptexts::holdKey, parent), setup_(desktop) {
  auto* controls = addControls();
  button_ = addButton(controls, setuptexts::changeKey);
  controls->addStretch();
  const auto variable = desktop.variable(SetupDesktop::Choice::holdKey);
  button_->setEnabled(desktop.canWatchKeys && variable.empty());
  explainVariable(variable);
  problem_ = addParagraph();
  problem_->hide();

  QObject::connect(button_, &QPushButton::clicked, this, [this] { toggle(); });
  setup_.onChange = [this] { refresh(); };
  setup_.onChosen = [this](const std::string& problem) {
    problem_->setText(QString::fromStdString(filled(setuptexts::notSaved, problem)));
    problem_->setVisible(!problem.empty());
    if (onChosen) onChosen();
  };
  QCoreApplication::instance()->installEventFilter(this);
  refresh();
}

void KeyRow::toggle() {
  setup_.isChoosing() ? setup_.abandon() : setup_.choose();
  button_->setFocus();
}

void KeyRow::refresh() {
  showLine(setup_.line());
  const char* text = setup_.isChoosing() ? setuptexts::keepKey : setuptexts::changeKey;
  button_->setText(text);
  button_->setAccessibleName(accessibleNameOf(text));
  if (onChange) onChange();
}

/// While a key is awaited, no key may press a button or move the focus as well.
bool KeyRow::eventFilter(QObject* watched, QEvent* event) {
  const auto type = event->type();
  // Keys that are pressed in another window are work, and no choice.
  if (type == QEvent::WindowDeactivate && watched == window()) setup_.abandon();
  const bool isKey = type == QEvent::KeyPress || type == QEvent::KeyRelease ||
                     type == QEvent::ShortcutOverride || type == QEvent::Shortcut;
  if (!isKey || !setup_.isChoosing()) return SetupRow::eventFilter(watched, event);
  const bool isEscape = type == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
  if (isEscape) setup_.abandon();
  event->accept();
  return true;
}

}  // namespace tavelo
