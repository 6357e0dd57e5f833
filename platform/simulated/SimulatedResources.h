#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>

#include "platform/Resources.h"

namespace tavelo::simulated {

class World;

/// The program's resources; none unless added. Main thread.
class SimulatedResources final : public platform::Resources {
 public:
  explicit SimulatedResources(World& world);

  std::optional<std::string> data(const std::string& name, const std::string& type) const override;

  void add(const std::string& name, const std::string& type, std::string data);

 private:
  World& world_;
  std::map<std::pair<std::string, std::string>, std::string> resources_;
};

}  // namespace tavelo::simulated
