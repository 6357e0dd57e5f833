#include "platform/macos/MacUserNotifications.h"

#import <Foundation/Foundation.h>
#import <UserNotifications/UserNotifications.h>

#include "platform/Uuid.h"
#import "platform/macos/FoundationText.h"

/// Without it, the centre shows nothing while our own application is the active one.
@interface TaveloNotificationDelegate : NSObject <UNUserNotificationCenterDelegate>
@end

@implementation TaveloNotificationDelegate

- (void)userNotificationCenter:(UNUserNotificationCenter*)centre
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions))handler {
  handler(UNNotificationPresentationOptionBanner | UNNotificationPresentationOptionList);
}

@end

namespace tavelo::macos {
namespace {

/// Nil without a bundle: there, asking for the centre ends the program with an exception.
UNUserNotificationCenter* notificationCentre() {
  if (NSBundle.mainBundle.bundleIdentifier == nil) return nil;
  return UNUserNotificationCenter.currentNotificationCenter;
}

}  // namespace

MacUserNotifications::MacUserNotifications() : delegate_([[TaveloNotificationDelegate alloc] init]) {
  notificationCentre().delegate = delegate_;
}

void MacUserNotifications::post(const std::string& title, const std::string& body) {
  UNUserNotificationCenter* const centre = notificationCentre();
  if (centre == nil) return;
  UNMutableNotificationContent* const content = [[UNMutableNotificationContent alloc] init];
  content.title = toFoundation(title);
  content.body = toFoundation(body);
  UNNotificationRequest* const request =
      [UNNotificationRequest requestWithIdentifier:toFoundation(platform::Uuid::random().string())
                                           content:content
                                           trigger:nil];
  // The answer comes on a thread of the centre's own, at once when the user has given it before.
  [centre requestAuthorizationWithOptions:UNAuthorizationOptionAlert
                        completionHandler:^(BOOL granted, NSError*) {
                          if (granted) [centre addNotificationRequest:request withCompletionHandler:nil];
                        }];
}

}  // namespace tavelo::macos
