#pragma once

#include "ui/qt/setup/RecognizerSetup.h"
#include "ui/qt/setup/SetupRow.h"

class QComboBox;
class QLineEdit;
class QProgressBar;

namespace tavelo {

/// The recogniser's line: the known models with a download, and a server in their place. Main thread.
class RecognizerRow final : public SetupRow {
 public:
  /// Both must outlive this object. It sets `onChange` of `setup` while it lives.
  RecognizerRow(const SetupDesktop& desktop, RecognizerSetup& setup, QWidget* parent);
  ~RecognizerRow() override;

 private:
  void addModels();
  void addProgress();
  void addServer(const std::string& address);
  void refresh();
  void showProgress();
  void chooseFolder();
  const models::KnownModel& model() const;

  RecognizerSetup& setup_;
  const bool isFixed_;
  QComboBox* models_ = nullptr;
  QLabel* facts_ = nullptr;
  QPushButton* fetch_ = nullptr;
  QPushButton* folder_ = nullptr;
  QProgressBar* progress_ = nullptr;
  QPushButton* pause_ = nullptr;
  QPushButton* cancel_ = nullptr;
  QLineEdit* server_ = nullptr;
  QPushButton* useServer_ = nullptr;
  QLabel* failure_ = nullptr;
};

}  // namespace tavelo
