#pragma once

#include <string>
#include <vector>

#include "platform/UserNotifications.h"
#include "platform/simulated/World.h"

namespace tavelo::simulated {

/// Keeps the notifications that would be shown. Main thread.
class SimulatedUserNotifications final : public platform::UserNotifications {
 public:
  struct Notification {
    std::string title;
    std::string body;

    bool operator==(const Notification&) const = default;
  };

  explicit SimulatedUserNotifications(World& world) : world_(world) {}

  void post(const std::string& title, const std::string& body) override {
    world_.requireMainThread("UserNotifications::post");
    posted_.push_back({title, body});
    world_.report(WorldEvent::Kind::notification, simulated::quoted(title) + ": " + simulated::quoted(body));
  }

  const std::vector<Notification>& posted() const { return posted_; }

 private:
  World& world_;
  std::vector<Notification> posted_;
};

}  // namespace tavelo::simulated
