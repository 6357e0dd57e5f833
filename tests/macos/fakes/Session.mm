// The applications, the files and the secrets of a session.
#import <ApplicationServices/ApplicationServices.h>
#import <Carbon/Carbon.h>

#include "tests/macos/fakes/SessionFakes.h"

@implementation NSRunningApplication
@end
@implementation NSWorkspace
@end
@implementation NSFileManager
@end
@implementation UNNotificationContent
@end
@implementation UNMutableNotificationContent
@end
@implementation UNNotificationRequest
@end
@implementation UNUserNotificationCenter
@end
@implementation FakeElement
@end

namespace tavelo::fakes {
Session& session() {
  static auto* const session = new Session;
  return *session;
}
}  // namespace tavelo::fakes

using tavelo::fakes::session;

const CFStringRef kAXFocusedUIElementAttribute = (__bridge CFStringRef) @"AXFocusedUIElement";
const CFStringRef kAXSubroleAttribute = (__bridge CFStringRef) @"AXSubrole";
const CFStringRef kAXSecureTextFieldSubrole = (__bridge CFStringRef) @"AXSecureTextField";

NSString* NSTemporaryDirectory() { return @"/var/folders/zz/T/"; }
Boolean IsSecureEventInputEnabled() { return session().secureInput; }
CFDictionaryRef CGSessionCopyCurrentDictionary() {
  return (__bridge_retained CFDictionaryRef)session().dictionary;
}
CFTypeID AXUIElementGetTypeID() { return (CFTypeID)(__bridge void*)[FakeElement class]; }
CFTypeID CFGetTypeID(CFTypeRef object) { return (CFTypeID)(__bridge void*)[(__bridge id)object class]; }
Boolean CFEqual(CFTypeRef a, CFTypeRef b) { return [(__bridge id)a isEqual:(__bridge id)b]; }
AXUIElementRef AXUIElementCreateApplication(pid_t process) {
  tavelo::fakes::recordFunction("AXUIElementCreateApplication", process);
  return (__bridge_retained AXUIElementRef)[FakeElement new];
}
AXError AXUIElementSetMessagingTimeout(AXUIElementRef, float seconds) {
  tavelo::fakes::recordFunction("AXUIElementSetMessagingTimeout", seconds);
  return kAXErrorSuccess;
}
AXError AXUIElementCopyAttributeValue(AXUIElementRef, CFStringRef attribute, CFTypeRef* value) {
  id const answer = CFEqual(attribute, kAXSubroleAttribute) ? session().subrole : session().focused;
  if (answer == nil) return kAXErrorCannotComplete;
  *value = (__bridge_retained CFTypeRef)answer;
  return kAXErrorSuccess;
}
