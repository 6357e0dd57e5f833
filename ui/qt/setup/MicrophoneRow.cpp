#include "ui/qt/setup/MicrophoneRow.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QPainter>
#include <algorithm>
#include <chrono>
#include <cmath>

#include "ui/qt/SystemAppearance.h"
#include "ui/qt/setup/FilledText.h"
#include "ui/qt/setup/SetupTexts.h"

namespace tavelo {

/// A bar as long as the sound is loud, on a scale of 60 decibels.
class LevelMeter final : public QWidget {
 public:
  explicit LevelMeter(QWidget* parent) : QWidget(parent) {
    setAccessibleName(setuptexts::level);
    setMinimumWidth(120);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  }

  /// From 0 to 1. Falls slowly, so that a short sound can be seen.
  void show(double level) {
    constexpr double range = 60;
    const double decibels = level > 0 ? 20 * std::log10(level) : -range;
    const double part = std::clamp(1 + decibels / range, 0.0, 1.0);
    const double shown = std::max(part, shown_ - 0.04);
    if (shown == shown_) return;
    shown_ = shown;
    update();
  }

  QSize sizeHint() const override { return {160, std::max(8, fontMetrics().height() / 2)}; }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    QColor ground = palette().color(QPalette::WindowText);
    ground.setAlphaF(0.15F);
    painter.setBrush(ground);
    const double round = height() / 2.0;
    painter.drawRoundedRect(rect(), round, round);
    if (shown_ <= 0) return;
    painter.setBrush(systemGreen(palette()));
    painter.drawRoundedRect(QRectF(0, 0, std::max(width() * shown_, double(height())), height()), round,
                            round);
  }

 private:
  double shown_ = 0;
};

MicrophoneRow::MicrophoneRow(const SetupDesktop& desktop, QWidget* parent)
    : SetupRow(setuptexts::microphone, parent),
      isFixed_(!desktop.variable(SetupDesktop::Choice::microphone).empty()),
      setup_(desktop),
      list_(new QComboBox(this)),
      meter_(new LevelMeter(this)) {
  auto* controls = addControls();
  auto* label = new QLabel(setuptexts::microphoneLabel, this);
  label->setBuddy(list_);
  list_->setAccessibleName(setuptexts::microphone);
  list_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  list_->setMinimumContentsLength(16);
  controls->addWidget(label);
  controls->addWidget(list_, 3);
  controls->addWidget(meter_, 2);
  explainVariable(desktop.variable(SetupDesktop::Choice::microphone));
  problem_ = addParagraph();
  problem_->hide();

  QObject::connect(list_, &QComboBox::activated, this, [this](int index) { choose(index); });
  setup_.onChange = [this] { refresh(); };
  QObject::connect(&levelTimer_, &QTimer::timeout, this, [this] { meter_->show(setup_.takeLevel()); });
  levelTimer_.start(std::chrono::milliseconds(50));
  refresh();
}

void MicrophoneRow::refresh() {
  showLine(setup_.line());
  fillList();
}

void MicrophoneRow::fillList() {
  // Filled anew, a list that is open would close under the user's hand.
  if (shown_ == std::pair(setup_.list().sources, setup_.chosen()) && list_->count() > 0) return;
  shown_ = {setup_.list().sources, setup_.chosen()};
  const auto& sources = shown_.first;
  const auto standard = std::ranges::find_if(sources, &SoundSource::isDefault);
  list_->clear();
  list_->addItem(
      QString::fromStdString(filled(setuptexts::defaultMicrophone,
                                    standard == sources.end() ? std::string("–") : standard->description)),
      QString());
  for (const auto& each : sources)
    list_->addItem(QString::fromStdString(each.description), QString::fromStdString(each.name));
  const auto chosen = QString::fromStdString(setup_.chosen());
  if (list_->findData(chosen) < 0)
    list_->addItem(QString::fromStdString(filled(setuptexts::microphoneGone, setup_.chosen())), chosen);
  list_->setCurrentIndex(list_->findData(chosen));
  list_->setEnabled(!isFixed_ && !sources.empty());
}

void MicrophoneRow::choose(int index) {
  const auto problem = setup_.choose(list_->itemData(index).toString().toStdString());
  problem_->setText(QString::fromStdString(filled(setuptexts::notSaved, problem)));
  problem_->setVisible(!problem.empty());
  refresh();
}

}  // namespace tavelo
