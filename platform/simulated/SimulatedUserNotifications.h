#pragma once

#include <string>
#include <vector>

#include "platform/UserNotifications.h"

namespace tavelo::simulated {

class World;

/// Keeps what would be shown. Main thread.
class SimulatedUserNotifications final : public platform::UserNotifications {
 public:
  struct Notification {
    std::string title;
    std::string body;

    bool operator==(const Notification&) const = default;
  };

  explicit SimulatedUserNotifications(World& world);

  void post(const std::string& title, const std::string& body) override;

  const std::vector<Notification>& posted() const { return posted_; }

 private:
  World& world_;
  std::vector<Notification> posted_;
};

}  // namespace tavelo::simulated
