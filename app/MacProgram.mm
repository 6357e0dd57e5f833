#include "app/MacProgram.h"

#include <functional>
#include <utility>
#include <vector>

#import <AppKit/AppKit.h>

#include "app/AppDelegateDefinition.h"
#include "app/InstanceMessages.h"
#include "app/MacServices.h"
#include "app/MacWiring.h"
#include "app/TerminationSignals.h"
#include "platform/Lifetime.h"
#include "platform/Platform.h"
#import "ui/appkit/MainMenu.h"

/// Tells the program that launching has finished. No other message of the application is of interest: nothing
/// is left to do when it ends, is opened again or closes a window.
@interface TaveloApplicationDelegate : NSObject <NSApplicationDelegate>
- (instancetype)initWithDidFinishLaunching:(std::function<void()>)didFinishLaunching;
@end

@implementation TaveloApplicationDelegate {
  std::function<void()> _didFinishLaunching;
}

- (instancetype)initWithDidFinishLaunching:(std::function<void()>)didFinishLaunching {
  if ((self = [super init])) _didFinishLaunching = std::move(didFinishLaunching);
  return self;
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
  _didFinishLaunching();
}

@end

namespace tavelo {

template class AppDelegate<MacServices>;

struct MacProgram::Parts {
  Parts() {
    applicationDelegate =
        [[TaveloApplicationDelegate alloc] initWithDidFinishLaunching:[this] { finishLaunching(); }];
    app.delegate = applicationDelegate;
    app.mainMenu = makeMainMenu();
    [app setActivationPolicy:NSApplicationActivationPolicyAccessory];
  }

  ~Parts() { app.delegate = nil; }

  void finishLaunching() {
    delegate->applicationDidFinishLaunching([this] { [app terminate:nil]; });
    hasLaunched = true;
    for (const auto message : std::exchange(waiting, {})) receive(message);
  }

  void receive(InstanceMessage message) {
    if (!hasLaunched) {
      waiting.push_back(message);
    } else {
      platform::current().mainQueue.async(lifetime.guard([this, message] { perform(*delegate, message); }));
    }
  }

  NSApplication* const app = NSApplication.sharedApplication;
  /// Without a window, macOS would put the program to sleep, and switch off a tap that answers late.
  const id<NSObject> activity =
      [NSProcessInfo.processInfo beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                                                   reason:@"The hold key may go down at any time."];
  /// Before the coordinator, whose services use the platform.
  const MacWiring wiring;
  const std::shared_ptr<AppDelegate<MacServices>> delegate = std::make_shared<AppDelegate<MacServices>>();
  /// The application object does not keep its delegate.
  TaveloApplicationDelegate* applicationDelegate = nil;
  const TerminationSignals signals{platform::current().mainQueue, [this] { [app terminate:nil]; }};
  bool hasLaunched = false;
  /// What came before launching had finished.
  std::vector<InstanceMessage> waiting;
  const platform::Lifetime lifetime;
};

MacProgram::MacProgram() : parts_(std::make_unique<Parts>()) {}

MacProgram::~MacProgram() = default;

void MacProgram::run() { [parts_->app run]; }

void MacProgram::receive(InstanceMessage message) { parts_->receive(message); }

std::string MacProgram::forget(const std::string& argument) { return tavelo::forget(*parts_->delegate, argument); }

}  // namespace tavelo
