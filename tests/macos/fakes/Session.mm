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
@implementation UNNotification
@end
@implementation UNNotificationRequest
@end
@implementation UNUserNotificationCenter
@end

namespace tavelo::fakes {
Session& session() {
  static auto* const session = new Session;
  return *session;
}
}  // namespace tavelo::fakes

using tavelo::fakes::session;

NSNotificationName const NSApplicationWillTerminateNotification = @"NSApplicationWillTerminateNotification";

NSString* NSTemporaryDirectory() { return @"/var/folders/zz/T/"; }
Boolean IsSecureEventInputEnabled() { return session().secureInput; }
CFDictionaryRef CGSessionCopyCurrentDictionary() {
  return (__bridge_retained CFDictionaryRef)session().dictionary;
}
