#pragma once

#include <concepts>
#include <functional>
#include <optional>
#include <string>

#include "hotkey/HotKeyAction.h"
#include "insertion/FocusTarget.h"
#include "speech/DictationState.h"

/// What the coordinator uses of each service and window, and nothing else.
///
/// Common to all: made without arguments, one instance each, kept as long as the coordinator. Every operation
/// is called on the main thread and returns without waiting for the user, `showError` excepted. No operation
/// reports failure through a result or an exception. Callbacks are optional members; an empty one is not
/// called.
namespace tavelo {

template <class Member, class Signature>
concept CallbackFor = std::same_as<Member, std::function<Signature>>;

/// `state()`: listening from a successful start until the dictation ends, else idle.
/// `start(locale)`: begins a dictation; nothing when listening; a failed start calls `onError` and stays
/// idle. `stop()`: ends the dictation at once and hands its transcript to `onTranscriptReady`, even when
/// empty; nothing when idle. `onStateChange`: at every change, synchronously, main thread.
/// `onPartialTranscript`: the running transcript after each result. `onTranscriptReady`: always after
/// `onStateChange(idle)`; left out when a recognition error ends a dictation before any text. `onError`: a
/// message for the user when a start fails.
template <class Service>
concept SpeechDictationContract = std::default_initializable<Service> &&
    requires(Service service, const Service constant, const std::string& text) {
  { constant.state() } -> std::same_as<DictationState>;
  { service.start(text) } -> std::same_as<void>;
  { service.stop() } -> std::same_as<void>;
  requires CallbackFor<decltype(service.onStateChange), void(DictationState)>;
  requires CallbackFor<decltype(service.onPartialTranscript), void(const std::string&)>;
  requires CallbackFor<decltype(service.onTranscriptReady), void(const std::string&)>;
  requires CallbackFor<decltype(service.onError), void(const std::string&)>;
};

/// `isAccessibilityTrusted()`: whether the process is trusted now; shows nothing.
/// `requestAccessibilityIfNeeded()`: shows the platform's prompt when it is not.
/// `requestSpeechAndMicrophone(completion)`: microphone, then speech; `completion` is called once, with true
/// only when both are granted, on any thread and possibly inside the call.
template <class Service>
concept PermissionContract = std::default_initializable<Service> &&
    requires(Service service, std::function<void(bool)> completion) {
  { service.isAccessibilityTrusted() } -> std::same_as<bool>;
  { service.requestAccessibilityIfNeeded() } -> std::same_as<void>;
  { service.requestSpeechAndMicrophone(completion) } -> std::same_as<void>;
};

/// `start()`: installs whichever watcher is not yet installed; safe to call again.
/// `onAction`: from inside keyboard-event delivery, for every accepted Fn press, Fn release and toggle.
/// `onTrigger`: after `onAction(toggle)`; the coordinator leaves it unset.
template <class Service>
concept HotKeyContract = std::default_initializable<Service> && requires(Service service) {
  { service.start() } -> std::same_as<void>;
  requires CallbackFor<decltype(service.onAction), void(HotKeyAction)>;
  requires CallbackFor<decltype(service.onTrigger), void()>;
};

/// `capture()`: the frontmost application and the focused element now; either may be absent.
template <class Service>
concept FocusCaptureContract = std::default_initializable<Service> && requires(Service service) {
  { service.capture() } -> std::same_as<FocusTarget>;
};

/// `insert(text, target)`: starts inserting, returns at once, goes on by its own timetable and reports
/// nothing.
template <class Service>
concept InsertionContract = std::default_initializable<Service> &&
    requires(Service service, const std::string& text, const std::optional<FocusTarget>& target) {
  { service.insert(text, target) } -> std::same_as<void>;
};

/// Construction reads the file and never fails. `add(raw, normalizedText)`: stores one entry of the default
/// locale "vi_VN" and rewrites the file; never fails.
template <class Service>
concept TranscriptCacheContract = std::default_initializable<Service> &&
    requires(Service service, std::string text) {
  { service.add(text, text) } -> std::same_as<void>;
  { service.add(text, text, text) } -> std::same_as<void>;
};

/// Construction puts the status item and its menu on the screen at once. The setters show state. `showError`
/// is a modal alert and returns when the user dismisses it; main-queue blocks run meanwhile. The callbacks
/// come when the user picks an item; the last two belong to the delayed insertion commands.
template <class Controller>
concept StatusMenuContract = std::default_initializable<Controller> &&
    requires(Controller controller, const std::string& message, bool value) {
  { controller.setListening(value) } -> std::same_as<void>;
  { controller.setInsertDirectly(value) } -> std::same_as<void>;
  { controller.setAccessibilityAvailable(value) } -> std::same_as<void>;
  { controller.showError(message) } -> std::same_as<void>;
  requires CallbackFor<decltype(controller.onToggleDictation), void()>;
  requires CallbackFor<decltype(controller.onToggleInsertMode), void()>;
  requires CallbackFor<decltype(controller.onShowPermissions), void()>;
  requires CallbackFor<decltype(controller.onQuit), void()>;
  requires CallbackFor<decltype(controller.onTestInsert), void()>;
  requires CallbackFor<decltype(controller.onInsertLastText), void()>;
};

/// Each show operation puts the overlay on the screen in that state; `showInserted()` takes it off again 0.9
/// s later, on its own. `showTranscribing` shows a preview of a text that may be absent.
template <class Controller>
concept FloatingStatusContract = std::default_initializable<Controller> &&
    requires(Controller controller, const std::optional<std::string>& text) {
  { controller.showRecording() } -> std::same_as<void>;
  { controller.showTranscribing(text) } -> std::same_as<void>;
  { controller.showInserted() } -> std::same_as<void>;
  { controller.hide() } -> std::same_as<void>;
};

/// `show(text, onInsert)`: offers the text for editing, in place of any earlier text and callback; `onInsert`
/// gets the edited text each time the user confirms, never when the user cancels. `onDismiss`: the window was
/// cancelled or closed without confirming.
template <class Controller>
concept ReviewWindowContract = std::default_initializable<Controller> &&
    requires(Controller controller, const std::string& text,
             std::function<void(const std::string&)> onInsert) {
  { controller.show(text, onInsert) } -> std::same_as<void>;
  requires CallbackFor<decltype(controller.onDismiss), void()>;
};

/// The type aliases that the coordinator is built over.
template <class Services>
concept ServiceBundle = SpeechDictationContract<typename Services::SpeechController> &&
    InsertionContract<typename Services::InsertionService> &&
    PermissionContract<typename Services::PermissionService> &&
    HotKeyContract<typename Services::HotKeyService> &&
    ReviewWindowContract<typename Services::ReviewWindow> &&
    FloatingStatusContract<typename Services::FloatingStatus> &&
    TranscriptCacheContract<typename Services::TranscriptCache> &&
    FocusCaptureContract<typename Services::FocusCaptureService> &&
    StatusMenuContract<typename Services::StatusController>;

}  // namespace tavelo
