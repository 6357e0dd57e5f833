#pragma once

#include <QWidget>
#include <functional>

#include "ui/qt/setup/SetupDesktop.h"

class QCheckBox;
class QLabel;
class QPlainTextEdit;
class QVBoxLayout;

namespace tavelo {

class KeyRow;
class RecognizerSetup;

/// The window: four lines, a field to dictate into, and what starts with the session. It may be closed and
/// made anew at any time; only `recognizer` remembers anything. Main thread.
class SetupWindow final : public QWidget {
 public:
  /// Both must outlive the window.
  SetupWindow(const SetupDesktop& desktop, RecognizerSetup& recognizer);

  /// Called when the user has closed it. The callback may destroy the window later, not at once.
  std::function<void()> onClose;

  /// Whether the next key is to be the hold key.
  bool isChoosingKey() const;

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QWidget* makePage(RecognizerSetup& recognizer);
  void addTrial(QVBoxLayout& page, QWidget* parent);
  void addSessionStart(QVBoxLayout& page, QWidget* parent);
  void nameKey();
  void fitScreen();

  const SetupDesktop& desktop_;
  KeyRow* key_ = nullptr;
  QPlainTextEdit* trial_ = nullptr;
  QCheckBox* session_ = nullptr;
  QLabel* sessionProblem_ = nullptr;
};

}  // namespace tavelo
