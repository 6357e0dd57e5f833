#pragma once

#include <string>

namespace tavelo::platform {

/// Tells the user something outside the program's own windows. Main thread.
class UserNotifications {
 public:
  virtual ~UserNotifications() = default;

  /// Shows a notification and returns at once. UTF-8. Does nothing if the desktop has no notifications.
  virtual void post(const std::string& title, const std::string& body) = 0;
};

}  // namespace tavelo::platform
