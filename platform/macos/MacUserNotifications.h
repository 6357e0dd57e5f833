#pragma once

#include "platform/UserNotifications.h"

namespace tavelo::macos {

/// Notifications in macOS's notification centre. The first one asks the user for the permission. Does nothing
/// when the user refuses, or outside a bundle, where there is no centre. Main thread.
class MacUserNotifications final : public platform::UserNotifications {
 public:
  void post(const std::string& title, const std::string& body) override;
};

}  // namespace tavelo::macos
