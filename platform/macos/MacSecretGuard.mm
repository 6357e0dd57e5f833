#include "platform/macos/MacSecretGuard.h"

#import <AppKit/AppKit.h>
#import <ApplicationServices/ApplicationServices.h>
#import <Carbon/Carbon.h>

namespace tavelo::macos {
namespace {

/// For each of the two questions to the focused application, in seconds.
constexpr float patience = 0.05F;

/// True for a session that is not on the screen either. No answer means no.
bool isSessionLocked() {
  NSDictionary<NSString*, NSNumber*>* const session =
      (NSDictionary*)CFBridgingRelease(CGSessionCopyCurrentDictionary());
  NSNumber* const onConsole = session[@"kCGSSessionOnConsoleKey"];
  return session[@"CGSSessionScreenIsLocked"].boolValue || (onConsole != nil && !onConsole.boolValue);
}

/// An attribute of `element`; nil if there is none or the application does not answer.
id attribute(id element, CFStringRef name) {
  if (element == nil) return nil;
  const auto reference = (__bridge AXUIElementRef)element;
  AXUIElementSetMessagingTimeout(reference, patience);
  CFTypeRef value = nullptr;
  if (AXUIElementCopyAttributeValue(reference, name, &value) != kAXErrorSuccess) return nil;
  return CFBridgingRelease(value);
}

bool passwordFieldHasFocus() {
  // Not the system-wide element, whose time-out would be that of the whole program.
  NSRunningApplication* const target = NSWorkspace.sharedWorkspace.frontmostApplication;
  if (target == nil) return false;
  id const application = CFBridgingRelease(AXUIElementCreateApplication(target.processIdentifier));
  id const field = attribute(application, kAXFocusedUIElementAttribute);
  if (field == nil || CFGetTypeID((__bridge CFTypeRef)field) != AXUIElementGetTypeID()) return false;
  id const subrole = attribute(field, kAXSubroleAttribute);
  return subrole != nil && CFEqual((__bridge CFTypeRef)subrole, kAXSecureTextFieldSubrole);
}

}  // namespace

void MacSecretGuard::ask(Answer answer) {
  auto secret = platform::Secret::none;
  if (isSessionLocked()) {
    secret = platform::Secret::lockedSession;
  } else if (IsSecureEventInputEnabled() || passwordFieldHasFocus()) {
    secret = platform::Secret::passwordField;
  }
  answer(secret);
}

}  // namespace tavelo::macos
