#include "ui/qt/setup/AccessibilityRow.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <chrono>

#include "ui/qt/setup/SetupTexts.h"

namespace tavelo {
namespace {

/// Between two looks at the desktop: an application may have been started again.
constexpr std::chrono::milliseconds lookInterval{2000};
/// The desktop needs a moment to switch it on.
constexpr std::chrono::milliseconds switchingTime{200};

}  // namespace

AccessibilityRow::AccessibilityRow(const SetupDesktop& desktop, QWidget* parent)
    : SetupRow(setuptexts::accessibility, parent), desktop_(desktop) {
  addParagraph(setuptexts::accessibilityPurpose);
  auto* controls = addControls();
  button_ = addButton(controls, setuptexts::enable);
  controls->addStretch();
  QObject::connect(button_, &QPushButton::clicked, this, [this] {
    desktop_.enableAccessibility();
    QTimer::singleShot(switchingTime, this, [this] { refresh(); });
  });
  QObject::connect(&timer_, &QTimer::timeout, this, [this] { refresh(); });
  timer_.start(lookInterval);
  button_->setEnabled(false);
  // In a turn of its own, since the desktop may answer late.
  QTimer::singleShot(0, this, [this] { refresh(); });
}

void AccessibilityRow::refresh() {
  const auto condition = desktop_.accessibility();
  const bool isOn = condition == AccessibilityCondition::on;
  showLine(
      accessibilityLine(condition, isOn ? desktop_.unreachableApplications() : std::vector<std::string>{}));
  button_->setEnabled(condition == AccessibilityCondition::off);
}

}  // namespace tavelo
