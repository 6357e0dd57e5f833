#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "app/DesktopArguments.h"
#include "app/SpeechWiring.h"
#include "commands/LinuxDiagnosis.h"
#include "commands/X11Diagnosis.h"
#include "platform/Environment.h"
#include "platform/linux/accessibility/AtspiAccessibility.h"
#include "platform/linux/audio/LinuxAudioEngine.h"
#include "platform/linux/notifications/DesktopNotifications.h"
#include "platform/linux/session/SessionType.h"
#include "platform/linux/x11/X11Desktop.h"
#include "platform/posix/PosixFileManager.h"
#include "platform/posix/SystemClock.h"
#include "platform/qt/QtMainQueue.h"
#include "settings/Names.h"
#include "settings/Settings.h"
#include "text/TranscriptCacheStore.h"

namespace tavelo {
namespace {

namespace names = settings::names;

constexpr const char* locale = "vi_VN";

/// Milliseconds for the watcher of status items to answer.
constexpr int statusItemHostLimit = 500;

/// How long a server may take to answer. A model that cannot be loaded is known by then.
constexpr std::chrono::seconds recognizerPatience{3};

X11Facts examineX11(linuxdesktop::X11Desktop& desktop, const settings::Settings& settings) {
  auto& windows = desktop.windows();
  const auto& holdKey = desktop.keyboardEvents().holdKey();
  return {.display =
              windows.isConnected() ? std::optional(platform::environmentVariable("DISPLAY")) : std::nullopt,
          .waylandSession = linuxdesktop::isWaylandSession(),
          .rawKeys = desktop.canWatchKeys(),
          .holdKey = holdKey.name,
          .holdKeyOrigin = origin(settings, {names::holdKey}),
          .unknownHoldKey = holdKey.isKnown ? std::nullopt : std::optional(holdKey.asked),
          .keyboardHasHoldKey = !holdKey.keys.empty(),
          .windowManager = windows.windowManager(),
          .namesActiveWindow = windows.supports("_NET_ACTIVE_WINDOW"),
          .clipboard = windows.isConnected(),
          .clipboardManager = windows.clipboardManagerRuns()};
}

/// Whether a panel shows the status items that programs register on the session bus.
bool statusItemHostRuns() {
  const auto bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return false;
  constexpr const char* watcher = "org.kde.StatusNotifierWatcher";
  auto question = QDBusMessage::createMethodCall(watcher, "/StatusNotifierWatcher",
                                                 "org.freedesktop.DBus.Properties", "Get");
  question << watcher << "IsStatusNotifierHostRegistered";
  // A `QDBusInterface` would first ask for the watcher's description, with a limit of 25 s.
  const auto answer = bus.call(question, QDBus::Block, statusItemHostLimit);
  return answer.arguments().value(0).value<QDBusVariant>().variant().toBool();
}

/// Opens the microphone for a moment and ignores what it hears.
void examineMicrophone(const settings::Settings& settings, LinuxFacts& facts) {
  facts.microphoneAsked = settings.value(names::microphone);
  facts.microphoneOrigin = origin(settings, {names::microphone});
  linuxdesktop::LinuxAudioEngine engine(std::make_shared<const std::string>(facts.microphoneAsked));
  engine.installTap(0, 1024, engine.inputFormat(0), [](const platform::AudioBuffer&) {});
  engine.prepare();
  if (const auto error = engine.start()) facts.microphoneError = error->localizedDescription;
  facts.microphone = engine.captured();
  engine.stop();
  engine.removeTap(0);
}

void examineRecognizer(const ConfiguredSpeech& speech, LinuxFacts& facts) {
  facts.recognizer = speech.description;
  facts.recognizerIsConfigured = speech.speech->makeRecognizer(locale) != nullptr;
  // Before our own attempt, which may fail too.
  facts.recognizerLastFailure = speech.lastFailure();
  facts.recognizerError = speech.failure(locale, recognizerPatience);
  facts.recognizerEngine = speech.engine(locale);
}

}  // namespace

std::vector<Finding> examineDesktop() {
  DesktopArguments arguments;
  const QCoreApplication application(arguments.count, arguments.values);
  posix::SystemClock clock;
  posix::PosixFileManager fileManager;
  qt::QtMainQueue mainQueue(clock);
  const auto settings = settings::Settings::ofUser();
  linuxdesktop::X11Desktop displayServer(settings.value(names::holdKey));
  linuxdesktop::DesktopNotifications notifications;
  linuxdesktop::AtspiAccessibility accessibility(mainQueue, clock, displayServer.windows(), notifications,
                                                 [&] { return displayServer.canWatchKeys(); });

  LinuxFacts facts;
  const auto trust = accessibility.facts();
  facts.accessibilityBus = trust.busAnswers;
  facts.accessibilityEnabled = trust.isEnabled;
  facts.statusArea = displayServer.windows().statusAreaRuns() || statusItemHostRuns();
  examineMicrophone(settings, facts);
  examineRecognizer(makeConfiguredSpeech(mainQueue, fileManager.applicationSupportDirectory(), settings),
                    facts);
  facts.recognizerOrigin = origin(settings, {names::recognizer, names::model, names::voskModel});
  facts.settingsFile = settings.file().value_or("").string();
  facts.settingsError = settings.error();
  const auto folder = transcriptCacheFile(fileManager).parent_path();
  facts.cacheFolder = folder.string();
  facts.cacheFolderError = writeError(folder);
  return diagnose(facts, diagnose(examineX11(displayServer, settings)));
}

}  // namespace tavelo
