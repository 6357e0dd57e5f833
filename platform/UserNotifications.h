#pragma once

#include <memory>
#include <string>

namespace tavelo::platform {

/// Tells the user something outside the program's own windows. Main thread.
class UserNotifications {
 public:
  virtual ~UserNotifications() = default;

  /// Shows a notification and returns at once. UTF-8. Does nothing if the desktop has no notifications.
  virtual void post(const std::string& title, const std::string& body) = 0;

  /// Like `post`, for something that passes. The notification is withdrawn when the result goes; null if that
  /// is not possible.
  virtual std::shared_ptr<void> show(const std::string& title, const std::string& body) {
    post(title, body);
    return nullptr;
  }
};

}  // namespace tavelo::platform
