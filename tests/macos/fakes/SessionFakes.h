#pragma once

#import <AppKit/AppKit.h>
#import <UserNotifications/UserNotifications.h>

#include "tests/macos/fakes/Fakes.h"

@interface NSRunningApplication ()
@property(readwrite, copy) NSString* localizedName;
@property(readwrite, copy) NSString* bundleIdentifier;
@property(readwrite) pid_t processIdentifier;
@property(readwrite, getter=isTerminated) BOOL terminated;
@property(readwrite, getter=isActive) BOOL active;
@end

@interface NSWorkspace ()
@property(readwrite, strong) NSRunningApplication* frontmostApplication;
@property(readwrite) BOOL accessibilityDisplayShouldReduceTransparency;
@end

@interface UNNotificationContent ()
@property(readwrite, copy) NSString* title;
@property(readwrite, copy) NSString* body;
@end

namespace tavelo::fakes {

/// What the session tells about secrets.
struct Session {
  NSDictionary* dictionary = nil;
  bool secureInput = false;
};
Session& session();

}  // namespace tavelo::fakes
