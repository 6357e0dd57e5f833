#include "app/DesktopWiring.h"

#include "platform/Platform.h"
#include "platform/linux/AtspiAccessibility.h"
#include "platform/linux/X11Windows.h"
#include "platform/posix/PosixFileManager.h"
#include "platform/posix/SystemClock.h"
#include "platform/qt/AbsentAudio.h"
#include "platform/qt/AbsentKeyboardEvents.h"
#include "platform/qt/AbsentUserNotifications.h"
#include "platform/qt/QtMainQueue.h"
#include "platform/qt/QtPasteboard.h"
#include "platform/qt/QtResources.h"
#include "platform/qt/QtWorkspace.h"
#include "platform/vosk/VoskConfiguration.h"
#include "platform/vosk/VoskSpeech.h"

namespace tavelo {

/// In the order in which they need each other.
struct DesktopWiring::Backends {
  posix::SystemClock clock;
  posix::PosixFileManager fileManager;
  qt::QtMainQueue mainQueue{clock};
  qt::QtWorkspace workspace;
  qt::QtPasteboard pasteboard;
  qt::AbsentKeyboardEvents keyboardEvents;
  vosk::VoskSpeech speech{mainQueue, vosk::VoskConfiguration(fileManager.applicationSupportDirectory())};
  qt::AbsentAudio audio;
  qt::QtResources resources;
  qt::AbsentUserNotifications userNotifications;
  linux::X11Windows windows;
  // No keys can be watched yet.
  linux::AtspiAccessibility accessibility{mainQueue, clock, windows, userNotifications, [] { return false; }};
  platform::Platform platform{.mainQueue = mainQueue,
                              .clock = clock,
                              .fileManager = fileManager,
                              .workspace = workspace,
                              .generalPasteboard = pasteboard,
                              .accessibility = accessibility,
                              .keyboardEvents = keyboardEvents,
                              .speech = speech,
                              .audio = audio,
                              .resources = resources,
                              .userNotifications = userNotifications};
  platform::Installation installation{platform};
};

DesktopWiring::DesktopWiring() : backends_(std::make_unique<Backends>()) {}

DesktopWiring::~DesktopWiring() = default;

}  // namespace tavelo
