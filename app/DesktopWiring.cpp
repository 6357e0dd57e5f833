#include "app/DesktopWiring.h"

#include "app/SpeechWiring.h"
#include "platform/Platform.h"
#include "platform/linux/LinuxAudio.h"
#include "platform/posix/PosixFileManager.h"
#include "platform/posix/SystemClock.h"
#include "platform/qt/AbsentAccessibility.h"
#include "platform/qt/AbsentKeyboardEvents.h"
#include "platform/qt/AbsentUserNotifications.h"
#include "platform/qt/QtMainQueue.h"
#include "platform/qt/QtPasteboard.h"
#include "platform/qt/QtResources.h"
#include "platform/qt/QtWorkspace.h"

namespace tavelo {

/// In the order in which they need each other.
struct DesktopWiring::Backends {
  posix::SystemClock clock;
  posix::PosixFileManager fileManager;
  qt::QtMainQueue mainQueue{clock};
  qt::QtWorkspace workspace;
  qt::QtPasteboard pasteboard;
  qt::AbsentAccessibility accessibility;
  qt::AbsentKeyboardEvents keyboardEvents;
  ConfiguredSpeech speech = makeConfiguredSpeech(mainQueue, fileManager.applicationSupportDirectory());
  linux::LinuxAudio audio;
  qt::QtResources resources;
  qt::AbsentUserNotifications userNotifications;
  platform::Platform platform{.mainQueue = mainQueue,
                              .clock = clock,
                              .fileManager = fileManager,
                              .workspace = workspace,
                              .generalPasteboard = pasteboard,
                              .accessibility = accessibility,
                              .keyboardEvents = keyboardEvents,
                              .speech = *speech.speech,
                              .audio = audio,
                              .resources = resources,
                              .userNotifications = userNotifications};
  platform::Installation installation{platform};
};

DesktopWiring::DesktopWiring() : backends_(std::make_unique<Backends>()) {}

DesktopWiring::~DesktopWiring() = default;

void DesktopWiring::preloadSpeech(const std::string& localeIdentifier) {
  backends_->speech.preload(localeIdentifier);
}

}  // namespace tavelo
