#include "platform/simulated/SimulatedUserNotifications.h"

#include "platform/simulated/World.h"

namespace tavelo::simulated {

SimulatedUserNotifications::SimulatedUserNotifications(World& world) : world_(world) {}

void SimulatedUserNotifications::post(const std::string& title, const std::string& body) {
  world_.requireMainThread("UserNotifications::post");
  posted_.push_back({title, body});
  world_.report(WorldEvent::Kind::notification, quoted(title) + ": " + quoted(body));
}

}  // namespace tavelo::simulated
