#include "app/DesktopWiring.h"

#include "app/SpeechWiring.h"
#include "platform/Platform.h"
#include "platform/linux/accessibility/AtspiAccessibility.h"
#include "platform/linux/audio/LinuxAudio.h"
#include "platform/linux/keyboard/X11KeyboardEvents.h"
#include "platform/linux/notifications/DesktopNotifications.h"
#include "platform/linux/pasteboard/X11Pasteboard.h"
#include "platform/linux/windows/X11Windows.h"
#include "platform/linux/windows/X11Workspace.h"
#include "platform/posix/PosixFileManager.h"
#include "platform/posix/SystemClock.h"
#include "platform/qt/QtMainQueue.h"
#include "platform/qt/QtResources.h"
#include "ui/SystemAppearance.h"

namespace tavelo {

/// In the order in which they need each other.
struct DesktopWiring::Backends {
  posix::SystemClock clock;
  posix::PosixFileManager fileManager;
  qt::QtMainQueue mainQueue{clock};
  linuxdesktop::X11Windows windows;
  linuxdesktop::X11Workspace workspace{windows};
  linuxdesktop::X11Pasteboard pasteboard;
  linuxdesktop::X11KeyboardEvents keyboardEvents{windows};
  linuxdesktop::DesktopNotifications userNotifications;
  linuxdesktop::AtspiAccessibility accessibility{mainQueue, clock, windows, userNotifications,
                                                 [this] { return keyboardEvents.canWatch(); }};
  ConfiguredSpeech speech = makeConfiguredSpeech(mainQueue, fileManager.applicationSupportDirectory());
  linuxdesktop::LinuxAudio audio;
  qt::QtResources resources;
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

DesktopWiring::DesktopWiring() : backends_(std::make_unique<Backends>()) {
  setCompositorCheck([backends = backends_.get()] { return backends->windows.compositorRuns(); });
}

DesktopWiring::~DesktopWiring() { setCompositorCheck({}); }

void DesktopWiring::preloadSpeech(const std::string& localeIdentifier) {
  backends_->speech.preload(localeIdentifier);
}

void DesktopWiring::announceUnsuitableSession() { backends_->accessibility.announceUnsuitableSession(); }

}  // namespace tavelo
