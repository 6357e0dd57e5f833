#include "rehearsal/RehearsalWindows.h"

#include <utility>

#include "platform/Platform.h"
#include "text/PreviewText.h"
#include "ui/Measures.h"
#include "ui/Texts.h"

namespace tavelo::rehearsal {

std::string nameOf(OverlayState state) {
  switch (state) {
    case OverlayState::recording:
      return "recording";
    case OverlayState::transcribing:
      return "transcribing";
    case OverlayState::inserted:
      return "inserted";
    case OverlayState::hidden:
      break;
  }
  return "hidden";
}

RehearsalOverlay::RehearsalOverlay() : mainQueue_(platform::current().mainQueue) {}

void RehearsalOverlay::showRecording() {
  show(OverlayState::recording, texts::releaseHoldKey(platform::current().names));
}

void RehearsalOverlay::showTranscribing(const std::optional<std::string>& text) {
  show(OverlayState::transcribing, previewText(text));
}

void RehearsalOverlay::showInserted() {
  show(OverlayState::inserted, "");
  mainQueue_.asyncAfter(measures::insertedDuration, lifetime_.guard([this] { hide(); }));
}

void RehearsalOverlay::hide() {
  if (state_ == OverlayState::hidden) return;
  state_ = OverlayState::hidden;
  if (onChange) onChange(*this);
}

void RehearsalOverlay::show(OverlayState state, std::string detail) {
  if (state == state_ && detail == detail_) return;
  state_ = state;
  detail_ = std::move(detail);
  if (onChange) onChange(*this);
}

RehearsalStatusMenu::RehearsalStatusMenu()
    : mainQueue_(platform::current().mainQueue), clock_(platform::current().clock) {}

void RehearsalStatusMenu::setListening(bool listening) {
  listening_ = listening;
  report(listening ? "listening" : "idle");
}

void RehearsalStatusMenu::setInsertDirectly(bool insertDirectly) {
  report(insertDirectly ? "inserts directly" : "reviews first");
}

void RehearsalStatusMenu::setAccessibilityAvailable(bool available) {
  report(available ? "accessibility granted" : "accessibility not granted");
}

void RehearsalStatusMenu::showError(const std::string& message) {
  alerts_.push_back(message);
  report("alert: " + message);
  mainQueue_.runUntil(clock_.uptime() + platform::toUptime(readingTime));
}

void RehearsalStatusMenu::report(const std::string& what) const {
  if (onChange) onChange(what);
}

void RehearsalReviewWindow::show(const std::string& text, std::function<void(const std::string&)> onInsert) {
  ++reviews_;
  text_ = text;
  onInsert_ = std::move(onInsert);
  changed();
}

void RehearsalReviewWindow::confirm(const std::optional<std::string>& edited) {
  if (!text_) return;
  const std::string text = edited.value_or(*text_);
  const auto review = reviews_;
  if (const auto onInsert = onInsert_) onInsert(text);
  if (review != reviews_) return;  // the callback began another review
  text_.reset();
  changed();
}

void RehearsalReviewWindow::dismiss() {
  if (!text_) return;
  text_.reset();
  changed();
  if (onDismiss) onDismiss();
}

void RehearsalReviewWindow::changed() const {
  if (onChange) onChange(*this);
}

}  // namespace tavelo::rehearsal
