#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "app/ServiceContracts.h"
#include "platform/MainQueue.h"

namespace tavelo {

/// The coordinator: owns every service and window and drives each dictation from the hot key to the inserted
/// text.
///
/// Whether a dictation runs is always read from the speech controller; the coordinator itself only remembers
/// where the text goes and how. Services know nothing of each other and meet here alone. Main thread only:
/// callbacks that may come elsewhere take one hop over the main queue first. Held by a `std::shared_ptr`;
/// every callback and deferred block holds it weakly. Definitions are in AppDelegateDefinition.h, included
/// only where a bundle is instantiated.
template <ServiceBundle Services>
class AppDelegate final : public std::enable_shared_from_this<AppDelegate<Services>> {
 public:
  using SpeechController = typename Services::SpeechController;
  using InsertionService = typename Services::InsertionService;
  using PermissionService = typename Services::PermissionService;
  using HotKeyService = typename Services::HotKeyService;
  using ReviewWindow = typename Services::ReviewWindow;
  using FloatingStatus = typename Services::FloatingStatus;
  using TranscriptCache = typename Services::TranscriptCache;
  using FocusCaptureService = typename Services::FocusCaptureService;
  using StatusController = typename Services::StatusController;

  /// Makes the services in their fixed order; shows nothing and connects nothing.
  AppDelegate();
  AppDelegate(const AppDelegate&) = delete;
  AppDelegate& operator=(const AppDelegate&) = delete;

  /// Builds the status menu, connects every service, starts the hot key; once, when launching has finished.
  /// Asks for no permission. `terminate` ends the application when the user quits.
  void applicationDidFinishLaunching(std::function<void()> terminate);

  /// Stops when listening, else starts.
  void toggleDictation();

  /// Remembers where the user is typing, asks for the permissions and starts listening; nothing when
  /// listening.
  void startDictationIfNeeded();

  /// Stops listening; the transcript follows by itself. A start that still waits for its permission will not
  /// listen; that the permission was refused is told all the same.
  void stopDictationIfNeeded();

  /// Finishes, stores and passes on a raw transcript.
  void handleTranscript(const std::string& raw);

  /// Switches between direct insertion and review.
  void toggleInsertMode();

  /// Makes the platform ask for every permission; a second later starts what they allow.
  void showPermissions();

  /// Inserts a test text into whatever has the focus 3 s from now.
  void scheduleTestInsert();

  /// Inserts the last finished text into whatever has the focus 3 s from now; says so when there is none.
  void scheduleInsertLastText();

  /// The windows and services, for the entry point and for whoever plays the user. `statusController()` only
  /// once launching has finished.
  StatusController& statusController() { return *statusController_; }
  SpeechController& speechController() { return speechController_; }
  InsertionService& insertionService() { return insertionService_; }
  PermissionService& permissionService() { return permissionService_; }
  HotKeyService& hotKeyService() { return hotKeyService_; }
  ReviewWindow& reviewWindow() { return reviewWindow_; }
  FloatingStatus& floatingStatus() { return floatingStatus_; }
  TranscriptCache& transcriptCache() { return transcriptCache_; }
  FocusCaptureService& focusCaptureService() { return focusCaptureService_; }

 private:
  void connectStatusMenu(std::function<void()> terminate);
  void connectSpeechController();
  void connectHotKey();

  /// Wraps a reaction so that it runs, where it is called, only while the coordinator exists.
  template <class Reaction>
  auto weakly(Reaction reaction);
  /// The same, one hop over the main queue later.
  template <class Reaction>
  auto onMainQueue(Reaction reaction);
  template <class Reaction>
  void after(platform::Seconds delay, Reaction reaction);

  void speechStateChanged(DictationState state);
  void permissionAnswered(bool granted, std::uint64_t stopsBefore);
  void hideOverlayUnlessTranscriptCame();
  void insertGeneratedText(const std::string& text);
  void insertEditedText(const std::string& text);
  template <class Text>
  void scheduleInsert(Text textAtThatTime);
  bool isListening() const { return speechController_.state() == DictationState::listening; }

  platform::MainQueue& mainQueue_;
  std::optional<StatusController> statusController_;
  SpeechController speechController_;
  InsertionService insertionService_;
  PermissionService permissionService_;
  HotKeyService hotKeyService_;
  ReviewWindow reviewWindow_;
  FloatingStatus floatingStatus_;
  TranscriptCache transcriptCache_;
  FocusCaptureService focusCaptureService_;
  bool insertDirectly_ = true;
  /// Where the text of the current dictation goes; replaced at every start.
  std::optional<FocusTarget> targetFocus_;
  /// The most recent finished text of this run; neither the raw transcript nor an edited text.
  std::string lastGeneratedText_;
  /// Counts stop requests; a start whose permission is granted after one does not listen any more.
  std::uint64_t stops_ = 0;
  /// Whether the dictation that ended last has brought a transcript.
  bool transcriptCame_ = false;
};

}  // namespace tavelo
