#include "ui/appkit/FloatingStatusWindowController.h"

#import <AppKit/AppKit.h>

#include "platform/MainQueue.h"
#include "text/PreviewText.h"
#include "ui/Texts.h"
#import "ui/appkit/AppKitValues.h"
#import "ui/appkit/OverlayPanel.h"
#include "ui/appkit/Screens.h"

namespace tavelo {

struct FloatingStatusWindowController::Overlay {
  Overlay() { buildOverlayContent(panel, views); }

  const OverlayViews views = makeOverlayViews();
  NSPanel* const panel = makeOverlayPanel();
  NSWindowController* const controller = [[NSWindowController alloc] initWithWindow:panel];
};

FloatingStatusWindowController::FloatingStatusWindowController(platform::MainQueue& mainQueue,
                                                               const platform::Names& names)
    : mainQueue_(mainQueue), names_(names), overlay_(std::make_unique<Overlay>()) {}

FloatingStatusWindowController::~FloatingStatusWindowController() { hide(); }

void FloatingStatusWindowController::showRecording() {
  show(texts::recording, texts::releaseHoldKey(names_), true);
}

void FloatingStatusWindowController::showTranscribing(const std::optional<std::string>& text) {
  show(texts::transcribing, previewText(text), true);
}

void FloatingStatusWindowController::showInserted() {
  show(texts::inserted, "", false);
  mainQueue_.asyncAfter(measures::insertedDuration, lifetime_.guard([this] { hide(); }));
}

void FloatingStatusWindowController::hide() { [overlay_->panel orderOut:nil]; }

void FloatingStatusWindowController::show(const char* title, const std::string& detail, bool active) {
  overlay_->views.titleLabel.stringValue = toAppKit(title);
  overlay_->views.detailLabel.stringValue = toAppKit(detail);
  overlay_->views.dotView.active = active;
  show();
}

void FloatingStatusWindowController::show() {
  NSRect frame = overlay_->panel.frame;
  frame.size = toAppKit(measures::compactSize);
  [overlay_->panel setFrame:frame display:YES];
  if (positionNearTopRight()) [overlay_->panel orderFrontRegardless];
}

bool FloatingStatusWindowController::positionNearTopRight() {
  const auto screen = screenWithPointer(currentScreenLayout());
  if (!screen) return false;
  const auto [x, y] = overlayPosition(screen->visibleFrame);
  const auto [width, height] = measures::compactSize;
  [overlay_->panel setFrameOrigin:toAppKit({x, y, width, height}, originScreenHeight()).origin];
  return true;
}

}  // namespace tavelo
