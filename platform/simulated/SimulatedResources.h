#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>

#include "platform/Resources.h"
#include "platform/simulated/World.h"

namespace tavelo::simulated {

/// The program's resources, empty at first. Main thread.
class SimulatedResources final : public platform::Resources {
 public:
  explicit SimulatedResources(World& world) : world_(world) {}

  std::optional<std::string> data(const std::string& name, const std::string& type) const override {
    world_.requireMainThread("Resources::data");
    const auto found = resources_.find({name, type});
    return found == resources_.end() ? std::nullopt : std::optional(found->second);
  }

  void add(const std::string& name, const std::string& type, std::string data) {
    resources_[{name, type}] = std::move(data);
  }

 private:
  World& world_;
  std::map<std::pair<std::string, std::string>, std::string> resources_;
};

}  // namespace tavelo::simulated
