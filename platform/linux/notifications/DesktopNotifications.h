#pragma once

#include <memory>
#include <string>

#include "platform/UserNotifications.h"

namespace tavelo::linuxdesktop {

/// Posts notifications through the desktop's notification service; does nothing if there is none. Main
/// thread, with an application object, whose name and desktop file name the notifications bear.
class DesktopNotifications final : public platform::UserNotifications {
 public:
  void post(const std::string& title, const std::string& body) override;
  std::shared_ptr<void> show(const std::string& title, const std::string& body) override;
};

}  // namespace tavelo::linuxdesktop
