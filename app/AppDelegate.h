#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "app/ServiceContracts.h"
#include "platform/Clock.h"
#include "platform/MainQueue.h"

namespace tavelo {

/// The coordinator. It owns every service and window, and drives each dictation from the hot key to the
/// inserted text.
///
/// Services do not know each other; they meet only here. The speech controller alone knows whether a
/// dictation is running; the coordinator remembers where the text goes and how.
///
/// Main thread only. Service callbacks that may come on another thread, or from inside an event delivery,
/// first take one hop over the main queue. Hold the coordinator in a `std::shared_ptr`: callbacks and
/// deferred blocks refer to it weakly and do nothing once it is gone. The definitions are in
/// AppDelegateDefinition.h; include that only to instantiate a bundle.
template <ServiceBundle Services>
class AppDelegate final : public std::enable_shared_from_this<AppDelegate<Services>> {
 public:
  /// Makes every service and window except the status menu. Shows nothing and connects nothing.
  AppDelegate();
  AppDelegate(const AppDelegate&) = delete;
  AppDelegate& operator=(const AppDelegate&) = delete;

  /// Shows the status menu, connects every service and starts the hot key. Asks for no permission. The
  /// program calls it once, when launching has finished. `terminate` is called when the user quits, and ends
  /// the program.
  void applicationDidFinishLaunching(std::function<void()> terminate);

  /// Stops the dictation if one is running, else starts one.
  void toggleDictation();

  /// Remembers where the user is typing, asks for the permissions and, once granted, starts listening. Does
  /// nothing while listening. Shows an alert if a permission is refused.
  void startDictationIfNeeded();

  /// Stops listening; the transcript arrives later through `handleTranscript`. Also voids every start that
  /// still waits for its permission answer, but a refusal still shows its alert.
  void stopDictationIfNeeded();

  /// Stops listening and drops what was said: nothing is inserted, nothing goes into the history. Hides the
  /// overlay. Also voids every start that still waits for its permission answer.
  void cancelDictationIfNeeded();

  /// Normalises a raw transcript, adds it to the history, and inserts it or opens it for review. Hides the
  /// overlay and does nothing else if no text is left after normalising.
  void handleTranscript(const std::string& raw);

  /// Switches between direct insertion and review.
  void toggleInsertMode();

  /// Asks for every permission. A second later, starts the hot key again and shows whether the process is
  /// trusted.
  void showPermissions();

  /// Inserts a test text into whatever has the focus 3 s from now.
  void scheduleTestInsert();

  /// Inserts the last finished text into whatever has the focus 3 s from now. Shows an alert if there is no
  /// text yet.
  void scheduleInsertLastText();

  /// Forgets the newest dictations, or all for `TranscriptCacheFile::everything`: in the history, and as the
  /// last finished text. What is being dictated, reviewed or inserted goes on. Returns how many the history
  /// had; absent if its file could not be written.
  std::optional<std::size_t> forgetDictations(std::size_t newest);

  /// Whether no dictation is under way and the last text has had its time to arrive. A text under review does
  /// not count.
  bool isAtRest() const;

  /// The services and windows, for the program, for rehearsals and for tests. `statusController()` is valid
  /// only after `applicationDidFinishLaunching`.
  auto& statusController() { return *statusController_; }
  auto& speechController() { return speechController_; }
  auto& insertionService() { return insertionService_; }
  auto& permissionService() { return permissionService_; }
  auto& hotKeyService() { return hotKeyService_; }
  auto& reviewWindow() { return reviewWindow_; }
  auto& floatingStatus() { return floatingStatus_; }
  auto& focusCaptureService() { return focusCaptureService_; }

 private:
  void connectStatusMenu(std::function<void()> terminate);
  void connectSpeechController();
  void connectHotKey();

  /// Wraps `reaction`, a member function or a lambda that takes the coordinator first, so that it runs inside
  /// the call, and only while the coordinator exists.
  template <class Reaction>
  auto weakly(Reaction reaction);
  /// The same, one hop over the main queue later. The wrapper may be called on any thread.
  template <class Reaction>
  auto onMainQueue(Reaction reaction);
  /// Runs `reaction` on the main queue after `delay`, if the coordinator still exists.
  template <class Reaction>
  void after(platform::Seconds delay, Reaction reaction);

  void speechStateChanged(DictationState state);
  void permissionAnswered(bool granted, std::uint64_t stopsBefore);
  void hideOverlayUnlessTranscriptCame();
  void insertGeneratedText(const std::string& text);
  void insertEditedText(const std::string& text);
  /// `textAtThatTime` is called with the coordinator when the delay is over, and returns the text.
  template <class Text>
  void scheduleInsert(Text textAtThatTime);
  /// Something begins that lasts that long and leaves its traces on the pasteboard.
  void work(platform::Seconds duration = {});
  bool isListening() const { return speechController_.state() == DictationState::listening; }

  platform::MainQueue& mainQueue_;
  const platform::Clock& clock_;
  std::optional<typename Services::StatusController> statusController_;
  typename Services::SpeechController speechController_;
  typename Services::InsertionService insertionService_;
  typename Services::PermissionService permissionService_;
  typename Services::HotKeyService hotKeyService_;
  typename Services::ReviewWindow reviewWindow_;
  typename Services::FloatingStatus floatingStatus_;
  typename Services::TranscriptCache transcriptCache_;
  typename Services::FocusCaptureService focusCaptureService_;
  bool insertDirectly_ = true;
  /// Where the text of the current dictation goes. Replaced at every start.
  std::optional<FocusTarget> targetFocus_;
  /// The last finished text of this run, before any editing in the review window.
  std::string lastGeneratedText_;
  /// How often a stop was requested. A start does not listen if this has changed by the time its permission
  /// is granted.
  std::uint64_t stops_ = 0;
  /// Whether a transcript has arrived since the last dictation ended.
  bool transcriptCame_ = false;
  /// When the traces of the last work will be gone.
  platform::Uptime restsAt_{};
};

}  // namespace tavelo
