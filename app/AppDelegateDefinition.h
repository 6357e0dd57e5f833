#pragma once

#include <algorithm>
#include <functional>
#include <utility>

#include "app/AppDelegate.h"
#include "platform/Clock.h"
#include "platform/Platform.h"
#include "text/TextNormalizer.h"
#include "ui/Texts.h"

namespace tavelo {

namespace delays {
/// From a direct insertion to its notice. Most texts have reached their field by then.
inline constexpr platform::Seconds insertedNotice{1.5};
/// From the permissions command to the restart of the hot key.
inline constexpr platform::Seconds hotKeyRestart{1.0};
/// How long the user has to click into a field before a delayed insertion.
inline constexpr platform::Seconds scheduledInsert{3.0};
/// From an insertion until nothing of it is left: the user's pasteboard is back after 4 s.
inline constexpr platform::Seconds aftermath{5.0};
}  // namespace delays

template <ServiceBundle Services>
AppDelegate<Services>::AppDelegate()
    : mainQueue_(platform::current().mainQueue), clock_(platform::current().clock) {}

template <ServiceBundle Services>
template <class Reaction>
auto AppDelegate<Services>::weakly(Reaction reaction) {
  return [weak = this->weak_from_this(), reaction = std::move(reaction)](const auto&... arguments) {
    if (const auto self = weak.lock()) std::invoke(reaction, *self, arguments...);
  };
}

template <ServiceBundle Services>
template <class Reaction>
auto AppDelegate<Services>::onMainQueue(Reaction reaction) {
  return [&queue = mainQueue_, weak = this->weak_from_this(),
          reaction = std::move(reaction)](auto... arguments) {
    queue.async([weak, reaction, ... arguments = std::move(arguments)] {
      if (const auto self = weak.lock()) std::invoke(reaction, *self, arguments...);
    });
  };
}

template <ServiceBundle Services>
template <class Reaction>
void AppDelegate<Services>::after(platform::Seconds delay, Reaction reaction) {
  mainQueue_.asyncAfter(delay, weakly(std::move(reaction)));
}

template <ServiceBundle Services>
void AppDelegate<Services>::applicationDidFinishLaunching(std::function<void()> terminate) {
  statusController_.emplace();
  connectStatusMenu(std::move(terminate));
  connectSpeechController();
  connectHotKey();
  // Last, so that the first key press finds every callback connected.
  hotKeyService_.start();
  statusController_->setAccessibilityAvailable(permissionService_.isAccessibilityTrusted());
}

template <ServiceBundle Services>
// The linter does not see the move in a template. NOLINTNEXTLINE(performance-unnecessary-value-param)
void AppDelegate<Services>::connectStatusMenu(std::function<void()> terminate) {
  statusController_->onToggleDictation = weakly(&AppDelegate::toggleDictation);
  statusController_->onToggleInsertMode = weakly(&AppDelegate::toggleInsertMode);
  statusController_->onShowPermissions = weakly(&AppDelegate::showPermissions);
  statusController_->onQuit = std::move(terminate);
  statusController_->onTestInsert = weakly(&AppDelegate::scheduleTestInsert);
  statusController_->onInsertLastText = weakly(&AppDelegate::scheduleInsertLastText);
  reviewWindow_.onDismiss = weakly([](AppDelegate& self) {
    if (!self.isListening()) self.floatingStatus_.hide();
  });
}

template <ServiceBundle Services>
void AppDelegate<Services>::connectSpeechController() {
  speechController_.onStateChange = weakly(&AppDelegate::speechStateChanged);
  speechController_.onPartialTranscript = onMainQueue(
      [](AppDelegate& self, const std::string& text) { self.floatingStatus_.showTranscribing(text); });
  speechController_.onTranscriptReady = onMainQueue(&AppDelegate::handleTranscript);
  speechController_.onError = onMainQueue([](AppDelegate& self, const std::string& message) {
    self.floatingStatus_.hide();
    self.statusController_->showError(message);
  });
}

template <ServiceBundle Services>
void AppDelegate<Services>::connectHotKey() {
  hotKeyService_.onAction = onMainQueue([](AppDelegate& self, HotKeyAction action) {
    switch (action) {
      case HotKeyAction::startHold:
        return self.startDictationIfNeeded();
      case HotKeyAction::stopHold:
        return self.stopDictationIfNeeded();
      case HotKeyAction::toggle:
        return self.toggleDictation();
      case HotKeyAction::cancelHold:
        return self.cancelDictationIfNeeded();
    }
  });
}

template <ServiceBundle Services>
void AppDelegate<Services>::toggleDictation() {
  isListening() ? stopDictationIfNeeded() : startDictationIfNeeded();
}

template <ServiceBundle Services>
void AppDelegate<Services>::startDictationIfNeeded() {
  if (isListening()) return;
  work();
  // Before any permission prompt, which would take the focus away.
  targetFocus_ = focusCaptureService_.capture();
  permissionService_.requestSpeechAndMicrophone(
      onMainQueue([stopsBefore = stops_](AppDelegate& self, bool granted) {
        self.permissionAnswered(granted, stopsBefore);
      }));
}

template <ServiceBundle Services>
void AppDelegate<Services>::permissionAnswered(bool granted, std::uint64_t stopsBefore) {
  if (!granted) {
    // Even if a stop came meanwhile: the user released the key to answer the prompt.
    statusController_->showError(texts::permissionsMissing);
  } else if (stops_ == stopsBefore) {
    speechController_.start("vi_VN");
  }
}

template <ServiceBundle Services>
void AppDelegate<Services>::stopDictationIfNeeded() {
  ++stops_;
  if (isListening()) speechController_.stop();
}

template <ServiceBundle Services>
void AppDelegate<Services>::cancelDictationIfNeeded() {
  ++stops_;
  if (!isListening()) return;
  speechController_.cancel();
  floatingStatus_.hide();
}

template <ServiceBundle Services>
void AppDelegate<Services>::work(platform::Seconds duration) {
  restsAt_ = std::max(restsAt_, clock_.uptime() + platform::toUptime(duration + delays::aftermath));
}

template <ServiceBundle Services>
bool AppDelegate<Services>::isAtRest() const {
  return !isListening() && clock_.uptime() >= restsAt_;
}

template <ServiceBundle Services>
void AppDelegate<Services>::speechStateChanged(DictationState state) {
  work();
  statusController_->setListening(state == DictationState::listening);
  if (state == DictationState::listening) {
    floatingStatus_.showRecording();
    return;
  }
  transcriptCame_ = false;
  // If a transcript comes, its hop is queued right after this call. Two hops run behind it.
  onMainQueue(
      [](AppDelegate& self) { self.onMainQueue (&AppDelegate::hideOverlayUnlessTranscriptCame)(); })();
}

template <ServiceBundle Services>
void AppDelegate<Services>::hideOverlayUnlessTranscriptCame() {
  if (!transcriptCame_ && !isListening()) floatingStatus_.hide();
}

template <ServiceBundle Services>
void AppDelegate<Services>::handleTranscript(const std::string& raw) {
  transcriptCame_ = true;
  floatingStatus_.showTranscribing(raw);
  const std::string text = TextNormalizer::normalize(raw);
  if (text.empty()) {
    floatingStatus_.hide();
    return;
  }
  transcriptCache_.add(raw, text);
  lastGeneratedText_ = text;
  insertGeneratedText(text);
}

template <ServiceBundle Services>
void AppDelegate<Services>::insertGeneratedText(const std::string& text) {
  work();
  if (!insertDirectly_) {
    reviewWindow_.show(text, weakly(&AppDelegate::insertEditedText));
    return;
  }
  floatingStatus_.hide();
  insertionService_.insert(text, targetFocus_);
  after(delays::insertedNotice, [](AppDelegate& self) {
    if (!self.isListening()) self.floatingStatus_.showInserted();
  });
}

template <ServiceBundle Services>
void AppDelegate<Services>::insertEditedText(const std::string& text) {
  work();
  insertionService_.insert(text, targetFocus_);
  floatingStatus_.showInserted();
}

template <ServiceBundle Services>
void AppDelegate<Services>::toggleInsertMode() {
  insertDirectly_ = !insertDirectly_;
  statusController_->setInsertDirectly(insertDirectly_);
}

template <ServiceBundle Services>
void AppDelegate<Services>::showPermissions() {
  permissionService_.requestAccessibilityIfNeeded();
  permissionService_.requestSpeechAndMicrophone([](bool) {});
  after(delays::hotKeyRestart, [](AppDelegate& self) {
    self.hotKeyService_.start();
    self.statusController_->setAccessibilityAvailable(self.permissionService_.isAccessibilityTrusted());
  });
}

template <ServiceBundle Services>
template <class Text>
void AppDelegate<Services>::scheduleInsert(Text textAtThatTime) {
  work(delays::scheduledInsert);
  floatingStatus_.showTranscribing(texts::clickIntoField);
  after(delays::scheduledInsert, [textAtThatTime](AppDelegate& self) {
    self.floatingStatus_.hide();
    self.insertionService_.insert(textAtThatTime(self), self.focusCaptureService_.capture());
  });
}

template <ServiceBundle Services>
void AppDelegate<Services>::scheduleTestInsert() {
  scheduleInsert([](AppDelegate&) { return std::string("Tavelo test insert"); });
}

template <ServiceBundle Services>
void AppDelegate<Services>::scheduleInsertLastText() {
  if (lastGeneratedText_.empty()) {
    statusController_->showError(texts::noTextYet);
    return;
  }
  scheduleInsert([](AppDelegate& self) { return self.lastGeneratedText_; });
}

template <ServiceBundle Services>
std::optional<std::size_t> AppDelegate<Services>::forgetDictations(std::size_t newest) {
  // It is the newest one, if the history still has it.
  lastGeneratedText_.clear();
  return transcriptCache_.forget(newest);
}

}  // namespace tavelo
