#include <QDBusConnection>
#include <QDBusInterface>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>

#include <unistd.h>

#include "app/SpeechWiring.h"
#include "commands/LinuxFacts.h"
#include "platform/linux/accessibility/AtspiAccessibility.h"
#include "platform/linux/audio/LinuxAudio.h"
#include "platform/linux/notifications/DesktopNotifications.h"
#include "platform/linux/session/SessionType.h"
#include "platform/linux/x11/X11Desktop.h"
#include "platform/posix/PosixFileManager.h"
#include "platform/posix/SystemClock.h"
#include "platform/qt/QtMainQueue.h"
#include "text/TranscriptCacheStore.h"

namespace tavelo {
namespace {

constexpr const char* locale = "vi_VN";

/// A model that cannot be loaded is known after this many questions, each of which waits 250 ms for it.
constexpr int questionsForAvailability = 12;

void lookAtKeysAndWindows(linuxdesktop::X11Windows& windows, const linuxdesktop::X11KeyboardEvents& keyboard,
                          LinuxFacts& facts) {
  const char* display = std::getenv("DISPLAY");
  if (windows.isConnected()) facts.display = display != nullptr ? display : "";
  facts.waylandSession = linuxdesktop::isWaylandSession();
  facts.rawKeys = keyboard.canWatch();
  const auto& key = keyboard.holdKey();
  facts.holdKey = key.name;
  if (!key.isKnown) facts.unknownHoldKey = key.asked;
  facts.keyboardHasHoldKey = !key.keys.empty();
  facts.windowManager = windows.windowManager();
  facts.namesActiveWindow = windows.supports("_NET_ACTIVE_WINDOW");
  facts.clipboard = windows.isConnected();
  facts.clipboardManager = windows.clipboardManagerRuns();
}

/// Whether a panel shows the status items that are told over the session bus.
bool statusItemHostRuns() {
  const auto bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return false;
  QDBusInterface watcher("org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
                         "org.kde.StatusNotifierWatcher", bus);
  watcher.setTimeout(500);
  return watcher.isValid() && watcher.property("IsStatusNotifierHostRegistered").toBool();
}

/// Opens the microphone for a moment; nothing of what it hears is looked at.
std::string microphoneError() {
  linuxdesktop::LinuxAudio audio;
  const auto engine = audio.makeEngine();
  engine->installTap(0, 1024, engine->inputFormat(0), [](const platform::AudioBuffer&) {});
  engine->prepare();
  const auto error = engine->start();
  engine->stop();
  engine->removeTap(0);
  return error ? error->localizedDescription : std::string{};
}

void lookAtRecognizer(const ConfiguredSpeech& speech, LinuxFacts& facts) {
  facts.recognizer = speech.description;
  const auto recognizer = speech.speech->makeRecognizer(locale);
  facts.recognizerIsConfigured = recognizer != nullptr;
  bool isAvailable = recognizer != nullptr;
  for (int question = 0; isAvailable && question < questionsForAvailability; ++question) {
    isAvailable = recognizer->isAvailable();
  }
  if (isAvailable) return;
  facts.recognizerError = speech.failure(locale);
  if (facts.recognizerError.empty()) facts.recognizerError = "it is not available";
}

/// Why nothing can be kept in the folder, which need not exist yet; empty when something can.
std::string reasonNotToWrite(std::filesystem::path folder) {
  std::error_code error;
  while (!std::filesystem::exists(folder, error) && folder.has_relative_path()) folder = folder.parent_path();
  if (!std::filesystem::is_directory(folder, error)) return folder.string() + " is no folder";
  return access(folder.c_str(), W_OK | X_OK) == 0 ? std::string{} : std::strerror(errno);
}

}  // namespace

LinuxFacts collectLinuxFacts() {
  posix::SystemClock clock;
  posix::PosixFileManager fileManager;
  qt::QtMainQueue mainQueue(clock);
  linuxdesktop::X11Windows windows;
  linuxdesktop::X11KeyboardEvents keyboard(windows);
  linuxdesktop::DesktopNotifications notifications;
  linuxdesktop::AtspiAccessibility accessibility(mainQueue, clock, windows, notifications,
                                                 [&] { return keyboard.canWatch(); });

  LinuxFacts facts;
  lookAtKeysAndWindows(windows, keyboard, facts);
  const auto trust = accessibility.facts();
  facts.accessibilityBus = trust.busAnswers;
  facts.accessibilityEnabled = trust.isEnabled;
  facts.statusArea = windows.statusAreaRuns() || statusItemHostRuns();
  facts.microphoneError = microphoneError();
  lookAtRecognizer(makeConfiguredSpeech(mainQueue, fileManager.applicationSupportDirectory()), facts);
  const auto folder = transcriptCacheFile(fileManager).parent_path();
  facts.cacheFolder = folder.string();
  facts.cacheFolderError = reasonNotToWrite(folder);
  return facts;
}

}  // namespace tavelo
