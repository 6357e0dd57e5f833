#pragma once

#include <concepts>
#include <functional>
#include <optional>
#include <string>

#include "hotkey/HotKeyAction.h"
#include "insertion/FocusTarget.h"
#include "speech/DictationState.h"

/// What the coordinator needs of each service and window, and nothing else.
///
/// The coordinator makes one of each, without arguments, and keeps it until its own end. It calls every
/// operation on the main thread. Only `showError` waits for the user. No operation throws or returns an
/// error; what the user must know comes through `onError`. Callbacks are `std::function` members, called on
/// the main thread unless stated otherwise. An empty one is not called.
namespace tavelo {

template <class Member, class Signature>
concept CallbackFor = std::same_as<Member, std::function<Signature>>;

/// Records and recognises one dictation at a time.
/// - `state()`: listening from a successful start until the dictation ends, else idle.
/// - `start(locale)`: begins a dictation. Does nothing while listening. If it fails, it calls `onError` and
///   stays idle.
/// - `stop()`: ends the dictation at once and passes its transcript, even an empty one, to
///   `onTranscriptReady`. Does nothing while idle.
/// - `cancel()`: ends the dictation at once and drops its transcript. Does nothing while idle.
/// - `onStateChange`: after every change, inside the call that caused it.
/// - `onPartialTranscript`: the whole transcript so far, after each result.
/// - `onTranscriptReady`: the transcript of a dictation that ended, after `onStateChange(idle)`. Not called
///   when the dictation is cancelled, or when a recognition error ends it before any text.
/// - `onError`: a message for the user when a dictation cannot start.
template <class Service>
concept SpeechDictationContract = std::default_initializable<Service> &&
    requires(Service service, const Service constant, const std::string& text) {
  { constant.state() } -> std::same_as<DictationState>;
  { service.start(text) } -> std::same_as<void>;
  { service.stop() } -> std::same_as<void>;
  { service.cancel() } -> std::same_as<void>;
  requires CallbackFor<decltype(service.onStateChange), void(DictationState)>;
  requires CallbackFor<decltype(service.onPartialTranscript), void(const std::string&)>;
  requires CallbackFor<decltype(service.onTranscriptReady), void(const std::string&)>;
  requires CallbackFor<decltype(service.onError), void(const std::string&)>;
};

/// Asks the platform for permissions.
/// - `isAccessibilityTrusted()`: whether the process is trusted now. Shows nothing.
/// - `requestAccessibilityIfNeeded()`: shows the platform's prompt if the process is not trusted.
/// - `requestSpeechAndMicrophone(completion)`: asks for the microphone, then for speech recognition.
///   `completion` is called at most once, on any thread and possibly inside the call: true if both are
///   granted, false if either is refused. It is never called if the user does not answer.
template <class Service>
concept PermissionContract = std::default_initializable<Service> &&
    requires(Service service, std::function<void(bool)> completion) {
  { service.isAccessibilityTrusted() } -> std::same_as<bool>;
  { service.requestAccessibilityIfNeeded() } -> std::same_as<void>;
  { service.requestSpeechAndMicrophone(completion) } -> std::same_as<void>;
};

/// Watches the keyboard for the Fn key and the toggle shortcut.
/// - `start()`: installs the watchers that are missing; the next call retries those that the system refused.
/// - `onAction`: an accepted Fn press, Fn release or toggle. If another key goes down during the hold, it is
///   `cancelHold`, once, in place of the release. Called while a key event is being delivered.
/// - `onTrigger`: after `onAction(toggle)`. The coordinator leaves it empty.
template <class Service>
concept HotKeyContract = std::default_initializable<Service> && requires(Service service) {
  { service.start() } -> std::same_as<void>;
  requires CallbackFor<decltype(service.onAction), void(HotKeyAction)>;
  requires CallbackFor<decltype(service.onTrigger), void()>;
};

/// - `capture()`: the frontmost application and its focused element at this moment. Either may be absent.
template <class Service>
concept FocusCaptureContract = std::default_initializable<Service> && requires(Service service) {
  { service.capture() } -> std::same_as<FocusTarget>;
};

/// - `insert(text, target)`: starts inserting and continues on its own timetable. Reports nothing.
template <class Service>
concept InsertionContract = std::default_initializable<Service> &&
    requires(Service service, const std::string& text, const std::optional<FocusTarget>& target) {
  { service.insert(text, target) } -> std::same_as<void>;
};

/// The history. Its constructor reads the file; one that cannot be read counts as empty.
/// - `add(raw, normalizedText, locale = "vi_VN")`: adds an entry and rewrites the file. A write error is not
///   reported.
template <class Service>
concept TranscriptCacheContract = std::default_initializable<Service> &&
    requires(Service service, std::string text, std::size_t count) {
  { service.add(text, text) } -> std::same_as<void>;
  { service.add(text, text, text) } -> std::same_as<void>;
  { service.forget(count) } -> std::same_as<std::optional<std::size_t>>;
};

/// The status item and its menu. Both are on the screen once it is made.
/// - `set…`: what the menu shows.
/// - `showError(message)`: a modal alert. Main-queue blocks run until the user dismisses it; then it returns.
///   Called by such a block, it may show the message in the open alert and return at once.
/// - `on…`: the user picked that item. `onTestInsert` and `onInsertLastText` are the delayed insertions.
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

/// The overlay. Each `show…` puts it on the screen in that state.
/// - `showTranscribing(text)`: previews the text, if there is one.
/// - `showInserted()`: hides the overlay by itself 0.9 s later.
template <class Controller>
concept FloatingStatusContract = std::default_initializable<Controller> &&
    requires(Controller controller, const std::optional<std::string>& text) {
  { controller.showRecording() } -> std::same_as<void>;
  { controller.showTranscribing(text) } -> std::same_as<void>;
  { controller.showInserted() } -> std::same_as<void>;
  { controller.hide() } -> std::same_as<void>;
};

/// The window for editing a text before it is inserted.
/// - `show(text, onInsert)`: opens with the text, replacing any earlier text and callback.
/// - `onInsert`: gets the edited text each time the user confirms.
/// - `onDismiss`: the user cancelled or closed the window without confirming.
template <class Controller>
concept ReviewWindowContract = std::default_initializable<Controller> &&
    requires(Controller controller, const std::string& text,
             std::function<void(const std::string&)> onInsert) {
  { controller.show(text, onInsert) } -> std::same_as<void>;
  requires CallbackFor<decltype(controller.onDismiss), void()>;
};

/// The types that a coordinator is made of: a struct of type aliases, nothing else in it.
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
