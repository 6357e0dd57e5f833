#include "app/LinuxWiring.h"

#include <optional>
#include <utility>
#include <vector>

#include "app/LinuxSetupWiring.h"
#include "app/SpeechWiring.h"
#include "platform/GuardedSpeech.h"
#include "platform/Platform.h"
#include "platform/SwitchingSpeech.h"
#include "platform/UnreadPaste.h"
#include "platform/linux/accessibility/AtspiAccessibility.h"
#include "platform/linux/audio/LinuxAudio.h"
#include "platform/linux/notifications/DesktopNotifications.h"
#include "platform/linux/notifications/NotificationWithButton.h"
#include "platform/linux/session/FileWatcher.h"
#include "platform/linux/session/LinuxSecretGuard.h"
#include "platform/linux/session/LinuxWorkspace.h"
#include "platform/linux/session/ProgramFileWatch.h"
#include "platform/linux/x11/X11Desktop.h"
#include "platform/posix/ExecutableFolder.h"
#include "platform/posix/PosixFileManager.h"
#include "platform/posix/SystemClock.h"
#include "platform/qt/QtMainQueue.h"
#include "platform/qt/QtResources.h"
#include "settings/Names.h"
#include "settings/Settings.h"
#include "ui/Texts.h"
#include "ui/qt/setup/SetupWindowController.h"

namespace tavelo {
namespace {

/// Picks the display server of this session. Today that is always X11. In a Wayland session it reaches only
/// the applications that still use X11, and reports that it cannot watch keys.
std::unique_ptr<linuxdesktop::DisplayServer> makeDisplayServer(const settings::Settings& settings) {
  return std::make_unique<linuxdesktop::X11Desktop>(settings.value(settings::names::holdKey));
}

}  // namespace

/// Ordered so that each backend comes after those it uses.
struct LinuxWiring::Backends {
  Backends() {
    workspace.onActivate = [this](auto process, auto window) { accessibility.cameToFront(process, window); };
    displayServer->mayPaste = [this] { return accessibility.mayPaste(); };
    displayServer->onPaste = [this] { unreadPaste.expect(); };
    unreadPaste.onUnread = [this] { userNotifications.post(texts::notInserted, texts::pasteUnread); };
    displayServer->onNoPasteKeys = [this] { tellNowhere(texts::noPasteKeys); };
    accessibility.onNowhere = [this](auto why) {
      using Nowhere = linuxdesktop::FieldReturn::Nowhere;
      tellNowhere(why == Nowhere::windowIsLost       ? texts::windowLost
                  : why == Nowhere::passwordHasFocus ? texts::passwordFocused
                                                     : texts::fieldOutOfSight);
    };
    secretGuard.keepsHoldKey = [this] { return setup && setup->keepsHoldKey(); };
    displayServer->onHoldKeyChanged = [this] { platform.names.holdKey = displayServer->holdKeyName(); };
    audio.setSource(settings.value(settings::names::microphone));
    if (const auto file = settings.file()) settingsWatcher.emplace(*file, [this] { takeSettings(); });
  }

  /// Uses what the settings say now. A dictation that runs goes on as it began.
  void takeSettings() {
    if (!settings.reload()) return;
    displayServer->setHoldKey(settings.value(settings::names::holdKey));
    audio.setSource(settings.value(settings::names::microphone));
    if (auto now = speechSettings(settings); now != std::exchange(usedSpeech, now)) replaceSpeech();
  }

  void replaceSpeech() {
    configuredSpeech = makeConfiguredSpeech(mainQueue, fileManager.applicationSupportDirectory(), settings);
    configuredSpeech.notifyThrough(userNotifications);
    speech.use(std::move(configuredSpeech.speech));
    configuredSpeech.preload(locale);
  }

  /// A text could be put nowhere: the user may paste it, and is told so.
  void tellNowhere(const char* why) {
    unreadPaste.forget();
    displayServer->pasteboard().keepText(mainQueue);
    userNotifications.post(texts::notInserted, why);
  }

  settings::Settings settings = settings::Settings::ofUser();
  posix::SystemClock clock;
  posix::PosixFileManager fileManager;
  qt::QtMainQueue mainQueue{clock};
  const std::unique_ptr<linuxdesktop::DisplayServer> displayServer = makeDisplayServer(settings);
  platform::UnreadPaste unreadPaste{mainQueue, displayServer->pasteboard()};
  linuxdesktop::LinuxWorkspace workspace{*displayServer};
  linuxdesktop::DesktopNotifications userNotifications;
  linuxdesktop::AtspiAccessibility accessibility{mainQueue, clock, displayServer->windows(),
                                                 userNotifications,
                                                 [this] { return displayServer->canWatchKeys(); }};
  /// All but the speech itself, which moves on.
  ConfiguredSpeech configuredSpeech =
      makeConfiguredSpeech(mainQueue, fileManager.applicationSupportDirectory(), settings);
  /// Whose recognition was loaded beforehand, and is again after a change.
  std::string locale;
  std::vector<std::string> usedSpeech = speechSettings(settings);
  platform::SwitchingSpeech speech{mainQueue, std::move(configuredSpeech.speech)};
  linuxdesktop::LinuxSecretGuard secretGuard{accessibility};
  platform::GuardedSpeech guardedSpeech{speech, secretGuard, mainQueue, displayServer->keyboardEvents(),
                                        userNotifications};
  linuxdesktop::LinuxAudio audio;
  qt::QtResources resources;
  platform::Platform platform{.mainQueue = mainQueue,
                              .clock = clock,
                              .fileManager = fileManager,
                              .workspace = workspace,
                              .generalPasteboard = displayServer->pasteboard(),
                              .accessibility = accessibility,
                              .keyboardEvents = displayServer->keyboardEvents(),
                              .speech = guardedSpeech,
                              .audio = audio,
                              .resources = resources,
                              .userNotifications = userNotifications,
                              .names = {.system = "máy tính",
                                        .systemAtStart = "Máy tính",
                                        .computer = "máy tính",
                                        .holdKey = displayServer->holdKeyName(),
                                        .fallbackKeys = "Ctrl Alt V"}};
  platform::Installation installation{platform};
  linuxdesktop::ProgramFileWatch programFile{posix::executableFile()};
  std::optional<linuxdesktop::NotificationWithButton> upgrade;
  /// Absent if there is no place for a settings file.
  std::optional<linuxdesktop::FileWatcher> settingsWatcher;
  /// Made when it is first shown.
  std::unique_ptr<SetupWindowController> setup;
};

LinuxWiring::LinuxWiring() : backends_(std::make_unique<Backends>()) {
  backends_->accessibility.keepToolkitFromHungBus(backends_->displayServer->accessibilityBus());
  backends_->configuredSpeech.notifyThrough(backends_->userNotifications);
}

LinuxWiring::~LinuxWiring() = default;

void LinuxWiring::preloadSpeech(const std::string& localeIdentifier) {
  backends_->locale = localeIdentifier;
  backends_->configuredSpeech.preload(localeIdentifier);
}

bool LinuxWiring::lacksRecognizer() const {
  return tavelo::lacksRecognizer(backends_->settings, backends_->fileManager.applicationSupportDirectory());
}

void LinuxWiring::showSetup() {
  auto& all = *backends_;
  if (!all.setup) {
    all.setup = std::make_unique<SetupWindowController>(
        makeSetupDesktop({.settings = all.settings,
                          .takeSettings = [&all] { all.takeSettings(); },
                          .renewSpeech =
                              [&all] {
                                all.takeSettings();
                                all.replaceSpeech();
                              },
                          .displayServer = *all.displayServer,
                          .accessibility = all.accessibility,
                          .speech = all.configuredSpeech,
                          .mainQueue = all.mainQueue,
                          .notifications = all.userNotifications,
                          .dataHome = all.fileManager.applicationSupportDirectory()}));
  }
  all.setup->show();
}

platform::ProgramFile LinuxWiring::programFile() const { return backends_->programFile.state(); }

void LinuxWiring::watchProgramFile(std::function<void()> changed) {
  backends_->programFile.onChange = std::move(changed);
}

void LinuxWiring::offerRestart(std::function<void()> restart) {
  backends_->upgrade.emplace(texts::programReplaced, texts::restartForNewProgram, texts::restart,
                             std::move(restart));
}

void LinuxWiring::tellRemoved() {
  backends_->upgrade.reset();
  backends_->userNotifications.post(texts::programRemoved, texts::goesOnUntilQuit);
}

void LinuxWiring::announceUnsuitableSession() { backends_->accessibility.announceUnsuitableSession(); }

}  // namespace tavelo
