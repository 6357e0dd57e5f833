#pragma once

#include <string>

namespace tavelo::platform {

/// Tells the user something outside the program's own windows. Main thread.
class UserNotifications {
 public:
  virtual ~UserNotifications() = default;

  /// Shows a notification and returns at once; silent when the desktop has no notifications. UTF-8.
  virtual void post(const std::string& title, const std::string& body) = 0;
};

}  // namespace tavelo::platform
