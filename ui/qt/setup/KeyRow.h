#pragma once

#include "ui/qt/setup/KeySetup.h"
#include "ui/qt/setup/SetupRow.h"

namespace tavelo {

/// The hold key's line, with the button that lets the user press another key. Main thread.
class KeyRow final : public SetupRow {
 public:
  KeyRow(const SetupDesktop& desktop, QWidget* parent);

  /// Whether the next key is the choice. The window's controls must not act on it.
  bool isChoosing() const { return setup_.isChoosing(); }

  std::string keyName() const { return setup_.keyName(); }

  /// Called when the line has changed, and when a key was chosen.
  std::function<void()> onChange;
  std::function<void()> onChosen;

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void refresh();
  void toggle();

  KeySetup setup_;
  QPushButton* button_;
  QLabel* problem_;
};

}  // namespace tavelo
