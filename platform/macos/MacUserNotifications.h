#pragma once

#import <Foundation/Foundation.h>

#include "platform/UserNotifications.h"

@class TaveloNotificationDelegate;

namespace tavelo::macos {

/// Notifications in macOS's notification centre. The first one asks the user for the permission. Does nothing
/// when the user refuses, or outside a bundle, where there is no centre. They show while our own window is in
/// front, too, if this was made before launching has finished. Main thread.
class MacUserNotifications final : public platform::UserNotifications {
 public:
  MacUserNotifications();
  void post(const std::string& title, const std::string& body) override;

 private:
  /// The centre does not keep it.
  TaveloNotificationDelegate* const delegate_;
};

}  // namespace tavelo::macos
