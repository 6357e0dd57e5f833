#include "ui/qt/FloatingStatusWindowController.h"

#include <QGuiApplication>
#include <QScreen>
#include <utility>

#include "platform/MainQueue.h"
#include "text/PreviewText.h"
#include "ui/Texts.h"
#include "ui/qt/OverlayPanel.h"

namespace tavelo {

FloatingStatusWindowController::FloatingStatusWindowController(platform::MainQueue& mainQueue,
                                                               platform::Workspace& workspace,
                                                               std::function<ScreenLayout()> screens,
                                                               const platform::Names& names)
    : mainQueue_(mainQueue),
      screens_(std::move(screens)),
      names_(names),
      panel_(std::make_unique<OverlayPanel>(workspace)) {
  // Qt does not move the overlay when its screen is unplugged.
  QObject::connect(qApp, &QGuiApplication::screenRemoved, panel_.get(), [this] { place(); });
}

FloatingStatusWindowController::~FloatingStatusWindowController() = default;

void FloatingStatusWindowController::showRecording() {
  const std::string detail = texts::releaseHoldKey(names_);
  const bool fits = panel_->hasRoomFor(QString::fromStdString(detail));
  show(texts::recording, fits ? detail : texts::releaseAnyHoldKey, true);
}

void FloatingStatusWindowController::showTranscribing(const std::optional<std::string>& text) {
  show(texts::transcribing, previewText(text), true);
}

void FloatingStatusWindowController::showInserted() {
  show(texts::inserted, "", false);
  mainQueue_.asyncAfter(measures::insertedDuration, lifetime_.guard([this] { hide(); }));
}

void FloatingStatusWindowController::hide() { panel_->hide(); }

void FloatingStatusWindowController::show(const char* title, const std::string& detail, bool active) {
  panel_->setContent(title, QString::fromStdString(detail), active);
  if (!place()) return;
  panel_->showOnTop();
}

bool FloatingStatusWindowController::place() {
  const auto screen = screenWithPointer(screens_());
  if (screen) panel_->move(toQt(overlayPosition(screen->visibleFrame)));
  return screen.has_value();
}

}  // namespace tavelo
