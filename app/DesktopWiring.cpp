#include "app/DesktopWiring.h"

#include "platform/Platform.h"
#include "platform/linux/DesktopNotifications.h"
#include "platform/linux/X11Pasteboard.h"
#include "platform/posix/PosixFileManager.h"
#include "platform/posix/SystemClock.h"
#include "platform/qt/AbsentAccessibility.h"
#include "platform/qt/AbsentAudio.h"
#include "platform/qt/AbsentKeyboardEvents.h"
#include "platform/qt/QtMainQueue.h"
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
  linux::X11Pasteboard pasteboard;
  qt::AbsentAccessibility accessibility;
  qt::AbsentKeyboardEvents keyboardEvents;
  vosk::VoskSpeech speech{mainQueue, vosk::VoskConfiguration(fileManager.applicationSupportDirectory())};
  qt::AbsentAudio audio;
  qt::QtResources resources;
  linux::DesktopNotifications userNotifications;
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
