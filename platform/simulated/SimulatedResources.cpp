#include "platform/simulated/SimulatedResources.h"

#include <utility>

#include "platform/simulated/World.h"

namespace tavelo::simulated {

SimulatedResources::SimulatedResources(World& world) : world_(world) {}

std::optional<std::string> SimulatedResources::data(const std::string& name, const std::string& type) const {
  world_.requireMainThread("Resources::data");
  const auto found = resources_.find({name, type});
  if (found == resources_.end()) return std::nullopt;
  return found->second;
}

void SimulatedResources::add(const std::string& name, const std::string& type, std::string data) {
  resources_[{name, type}] = std::move(data);
}

}  // namespace tavelo::simulated
