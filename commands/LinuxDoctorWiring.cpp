#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "app/DesktopArguments.h"
#include "app/SingleInstance.h"
#include "app/SpeechWiring.h"
#include "commands/CommandWiring.h"
#include "commands/LinuxDiagnosis.h"
#include "commands/X11Diagnosis.h"
#include "language/Language.h"
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

/// What a recogniser's log begins with: "2026-11-23 16:00:00".
constexpr std::size_t lengthOfTime = 19;

X11Facts examineX11(linuxdesktop::X11Desktop& desktop, const settings::Settings& settings) {
  auto& windows = desktop.windows();
  const auto& holdKey = desktop.keyboardEvents().holdKey();
  const bool inVietnamese = language::current() == language::Language::vietnamese;
  return {.display =
              windows.isConnected() ? std::optional(platform::environmentVariable("DISPLAY")) : std::nullopt,
          .waylandSession = linuxdesktop::isWaylandSession(),
          .rawKeys = desktop.canWatchKeys(),
          .holdKey = inVietnamese ? holdKey.vietnameseName : holdKey.name,
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

/// A command that starts the sound server; empty if one runs or is somewhere else.
std::string soundServerStart() {
  std::error_code ignored;
  const auto exists = [&](const std::filesystem::path& file) {
    return std::filesystem::exists(file, ignored);
  };
  const auto server = platform::environmentVariable("PULSE_SERVER");
  if (!server.empty() || exists(platform::environmentVariable("XDG_RUNTIME_DIR") + "/pulse/native"))
    return {};
  if (exists("/usr/bin/pipewire-pulse")) return "systemctl --user restart pipewire-pulse";
  if (exists("/usr/bin/pulseaudio")) return "pulseaudio --start";
  return "sudo apt install pulseaudio && pulseaudio --start";
}

void examineRecognizer(const ConfiguredSpeech& speech, bool withLogs, LinuxFacts& facts) {
  facts.recognizer = speech.description;
  facts.recognizerIsConfigured = speech.speech->makeRecognizer(locale) != nullptr;
  // Before our own attempt, which may fail too.
  facts.recognizerLastFailure = speech.lastFailure();
  if (!withLogs)
    facts.recognizerLastFailure.resize(std::min(lengthOfTime, facts.recognizerLastFailure.size()));
  facts.recognizerError = speech.failure(locale, recognizerPatience);
  facts.recognizerIsLoading = facts.recognizerError.empty() && speech.isLoading(locale);
  facts.recognizerEngine = speech.engine(locale);
}

}  // namespace

std::string sessionKind() { return linuxdesktop::isWaylandSession() ? "wayland" : "x11"; }

std::vector<Finding> examineDesktop(bool withLogs) {
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
  if (!facts.microphoneError.empty()) facts.soundServerStart = soundServerStart();
  const auto dataHome = fileManager.applicationSupportDirectory();
  examineRecognizer(makeConfiguredSpeech(mainQueue, dataHome, settings), withLogs, facts);
  const auto naming = {names::recognizer, names::model, names::voskModel};
  facts.recognizerOrigin = origin(settings, naming);
  facts.recognizerIsNamed =
      std::ranges::any_of(naming, [&](const char* name) { return !settings.value(name).empty(); });
  facts.settingsFile = settings.file().value_or("").string();
  facts.settingsError = settings.error();
  // Without the variable, Qt would make a folder, and say so.
  facts.olderProgramRuns =
      !platform::environmentVariable("XDG_RUNTIME_DIR").empty() &&
      SingleInstance(instanceFolder()).send(InstanceMessage::examine, false).words == replacedProgram;
  const auto folder = transcriptCacheFile(fileManager).parent_path();
  facts.cacheFolder = folder.string();
  facts.cacheFolderError = writeError(folder);
  return diagnose(facts, diagnose(examineX11(displayServer, settings)));
}

}  // namespace tavelo
