#include "ui/qt/FloatingStatusWindowController.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QScreen>
#include <QString>
#include <utility>

#include "platform/MainQueue.h"
#include "text/PreviewText.h"
#include "ui/qt/OverlayLabel.h"
#include "ui/qt/OverlayPanel.h"
#include "ui/qt/RecordingDotView.h"
#include "ui/qt/SystemAppearance.h"

namespace tavelo {
namespace {

constexpr platform::Seconds insertedDuration{0.9};

constexpr int sideInset = 12;
constexpr int dotSize = 10;
constexpr int dotSpacing = 9;
constexpr int titleTop = 9;
constexpr int lineSpacing = 3;
constexpr int detailHeight = 13;

}  // namespace

FloatingStatusWindowController::FloatingStatusWindowController(platform::MainQueue& mainQueue,
                                                               platform::Workspace& workspace,
                                                               std::function<ScreenLayout()> screens)
    : mainQueue_(mainQueue),
      screens_(std::move(screens)),
      panel_(std::make_unique<OverlayPanel>(compactSize, workspace)),
      dotView_(new RecordingDotView(panel_.get())),
      titleLabel_(
          new OverlayLabel(systemFont(12, QFont::DemiBold), Qt::AlignLeft, Qt::ElideRight, panel_.get())),
      detailLabel_(new OverlayLabel(systemFont(10), Qt::AlignRight, Qt::ElideLeft, panel_.get())) {
  buildContent();
  // Nobody else moves it from a screen that is unplugged under it.
  QObject::connect(qApp, &QGuiApplication::screenRemoved, panel_.get(), [this] { place(); });
}

FloatingStatusWindowController::~FloatingStatusWindowController() = default;

void FloatingStatusWindowController::buildContent() {
  panel_->setObjectName("overlay");
  panel_->setWindowTitle("Tavelo");
  titleLabel_->setObjectName("overlay.title");
  titleLabel_->setText("Đang thu âm");
  detailLabel_->setObjectName("overlay.detail");
  detailLabel_->setSecondary(true);

  dotView_->setGeometry(sideInset, (compactSize.height() - dotSize) / 2, dotSize, dotSize);
  const int left = sideInset + dotSize + dotSpacing;
  const int width = compactSize.width() - left - sideInset;
  const int titleHeight = QFontMetrics(titleLabel_->font()).height();
  titleLabel_->setGeometry(left, titleTop, width, titleHeight);
  detailLabel_->setGeometry(left, titleTop + titleHeight + lineSpacing, width, detailHeight);
}

void FloatingStatusWindowController::showRecording() {
  show("Đang thu âm", "Nhả Fn để tạo và chèn văn bản", true);
}

void FloatingStatusWindowController::showTranscribing(const std::optional<std::string>& text) {
  show("Đang bóc tách văn bản", QString::fromStdString(previewText(text)), true);
}

void FloatingStatusWindowController::showInserted() {
  show("Đã chèn văn bản", "", false);
  mainQueue_.asyncAfter(insertedDuration, lifetime_.guard([this] { hide(); }));
}

void FloatingStatusWindowController::hide() { panel_->hide(); }

void FloatingStatusWindowController::show(const QString& title, const QString& detail, bool active) {
  titleLabel_->setText(title);
  detailLabel_->setText(detail);
  dotView_->setActive(active);

  panel_->updateShape();
  if (!place()) return;
  panel_->show();
  panel_->raise();
}

bool FloatingStatusWindowController::place() {
  const auto screen = screenWithPointer(screens_());
  if (screen) panel_->move(overlayPosition(screen->visibleFrame, compactSize, screenMargin));
  return screen.has_value();
}

}  // namespace tavelo
