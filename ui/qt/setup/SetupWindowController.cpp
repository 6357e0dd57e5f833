#include "ui/qt/setup/SetupWindowController.h"

#include <utility>

#include "platform/MainQueue.h"
#include "platform/Platform.h"
#include "ui/qt/setup/SetupTexts.h"
#include "ui/qt/setup/SetupWindow.h"

namespace tavelo {

SetupWindowController::SetupWindowController(SetupDesktop desktop)
    : desktop_(std::move(desktop)), recognizer_(desktop_) {
  recognizer_.onFetched = [this](bool worked) { fetched(worked); };
}

SetupWindowController::~SetupWindowController() = default;

void SetupWindowController::show() {
  if (!window_) {
    window_ = std::make_unique<SetupWindow>(desktop_, recognizer_);
    // It is in the middle of an event of its own when it is closed.
    window_->onClose = [this] {
      platform::current().mainQueue.async(lifetime_.guard([this] {
        if (window_ && !window_->isVisible()) window_.reset();
      }));
    };
    recognizer_.examine();
  }
  window_->isMinimized() ? window_->showNormal() : window_->show();
  window_->raise();
  window_->activateWindow();
}

bool SetupWindowController::keepsHoldKey() const {
  if (!window_ || !window_->isActiveWindow()) return false;
  return window_->isChoosingKey() || !recognizer_.isUsable();
}

void SetupWindowController::fetched(bool worked) const {
  if (!window_)
    desktop_.notify(setuptexts::title, worked ? setuptexts::fetched : setuptexts::fetchFailedOutside);
}

}  // namespace tavelo
