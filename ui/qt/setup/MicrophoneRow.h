#pragma once

#include <QTimer>
#include <string>
#include <utility>
#include <vector>

#include "ui/qt/setup/MicrophoneSetup.h"
#include "ui/qt/setup/SetupRow.h"

class QComboBox;

namespace tavelo {

class LevelMeter;

/// The microphone's line, with the list of microphones and a level that moves. Main thread.
class MicrophoneRow final : public SetupRow {
 public:
  MicrophoneRow(const SetupDesktop& desktop, QWidget* parent);

 private:
  void refresh();
  void fillList();
  void choose(int index);

  const bool isFixed_;
  /// What the list shows: the microphones and the chosen one.
  std::pair<std::vector<SoundSource>, std::string> shown_;
  MicrophoneSetup setup_;
  QComboBox* list_;
  LevelMeter* meter_;
  QLabel* problem_;
  QTimer levelTimer_;
};

}  // namespace tavelo
