#pragma once

#include "platform/UserNotifications.h"

namespace tavelo::qt {

/// Notifications on a desktop that has none: silent. Main thread.
class AbsentUserNotifications final : public platform::UserNotifications {
 public:
  void post(const std::string&, const std::string&) override {}
};

}  // namespace tavelo::qt
