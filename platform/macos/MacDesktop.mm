#include "platform/macos/MacDesktop.h"

#include <utility>

#import <AppKit/AppKit.h>

#include "platform/GuardedSpeech.h"
#include "platform/OverlaidPasteboard.h"
#include "platform/Platform.h"
#include "platform/macos/MacAccessibility.h"
#include "platform/macos/MacAudio.h"
#include "platform/macos/MacFileManager.h"
#include "platform/macos/MacKeyboardEvents.h"
#include "platform/macos/MacPasteboard.h"
#include "platform/macos/MacResources.h"
#include "platform/macos/MacSecretGuard.h"
#include "platform/macos/MacSpeech.h"
#include "platform/macos/MacUserNotifications.h"
#include "platform/macos/MacWorkspace.h"
#include "platform/macos/RunLoopMainQueue.h"
#include "platform/posix/SystemClock.h"

namespace tavelo::macos {
namespace {

constexpr const char* interrupted = "Thiết bị thu âm đã thay đổi.";

}  // namespace

/// Ordered so that each backend comes after those it uses.
struct MacDesktop::Parts {
  explicit Parts(platform::Names ownNames) : names(std::move(ownNames)) {
    keyboardEvents.willPaste = [this] {
      overlaidPasteboard.prepareForPaste();
      pasteboard.pasteFollows();
    };
    audio.onInterrupted = [this] { speech.failRunningTasks(interrupted); };
    auto* const lent = &overlaidPasteboard;
    end = [NSNotificationCenter.defaultCenter addObserverForName:NSApplicationWillTerminateNotification
                                                          object:nil
                                                           queue:nil
                                                      usingBlock:^(NSNotification*) {
                                                        lent->restore();
                                                      }];
  }
  ~Parts() { [NSNotificationCenter.defaultCenter removeObserver:end]; }
  Parts(const Parts&) = delete;
  Parts& operator=(const Parts&) = delete;

  platform::Names names;
  posix::SystemClock clock;
  MacFileManager fileManager;
  RunLoopMainQueue mainQueue;
  MacWorkspace workspace;
  MacUserNotifications userNotifications;
  MacPasteboard pasteboard{clock};
  platform::OverlaidPasteboard overlaidPasteboard{pasteboard};
  MacAccessibility accessibility{mainQueue, clock};
  MacKeyboardEvents keyboardEvents{mainQueue, clock};
  MacSpeech speech{mainQueue};
  MacSecretGuard secretGuard;
  platform::GuardedSpeech guardedSpeech{speech, secretGuard, mainQueue, keyboardEvents, userNotifications};
  MacAudio audio{mainQueue};
  MacResources resources;
  platform::Platform platform{.mainQueue = mainQueue,
                              .clock = clock,
                              .fileManager = fileManager,
                              .workspace = workspace,
                              .generalPasteboard = overlaidPasteboard,
                              .accessibility = accessibility,
                              .keyboardEvents = keyboardEvents,
                              .speech = guardedSpeech,
                              .audio = audio,
                              .resources = resources,
                              .userNotifications = userNotifications,
                              .names = names};
  platform::Installation installation{platform};
  /// Observes the end of the program.
  id end = nil;
};

MacDesktop::MacDesktop(platform::Names names) : parts_(std::make_unique<Parts>(std::move(names))) {}

MacDesktop::~MacDesktop() = default;

}  // namespace tavelo::macos
