#include "platform/macos/MacUserNotifications.h"

#import <Foundation/Foundation.h>
#import <UserNotifications/UserNotifications.h>

#include "platform/Uuid.h"
#import "platform/macos/FoundationText.h"

namespace tavelo::macos {

void MacUserNotifications::post(const std::string& title, const std::string& body) {
  // A program without a bundle ends with an exception when it asks for the centre.
  if (NSBundle.mainBundle.bundleIdentifier == nil) return;
  UNMutableNotificationContent* const content = [[UNMutableNotificationContent alloc] init];
  content.title = toFoundation(title);
  content.body = toFoundation(body);
  UNNotificationRequest* const request =
      [UNNotificationRequest requestWithIdentifier:toFoundation(platform::Uuid::random().string())
                                           content:content
                                           trigger:nil];
  UNUserNotificationCenter* const centre = UNUserNotificationCenter.currentNotificationCenter;
  // The answer comes on a thread of the centre's own, at once when the user has given it before.
  [centre requestAuthorizationWithOptions:UNAuthorizationOptionAlert
                        completionHandler:^(BOOL granted, NSError*) {
                          if (granted) [centre addNotificationRequest:request withCompletionHandler:nil];
                        }];
}

}  // namespace tavelo::macos
