#include "platform/simulated/SimulatedMicrophone.h"

#include <algorithm>
#include <utility>

#include "platform/simulated/World.h"

namespace tavelo::simulated {

SimulatedMicrophone::SimulatedMicrophone(World& world) : world_(world) {}

void SimulatedMicrophone::play(std::vector<std::int16_t> samples) {
  const std::lock_guard lock{mutex_};
  samples_ = std::move(samples);
  position_ = 0;
}

void SimulatedMicrophone::setStartFailure(std::optional<std::string> localizedDescription) {
  startFailure_ = std::move(localizedDescription);
}

std::optional<platform::Uptime> SimulatedMicrophone::lastSampleDelivered() const {
  const std::lock_guard lock{mutex_};
  return lastSampleDelivered_;
}

void SimulatedMicrophone::began() {
  {
    const std::lock_guard lock{mutex_};
    position_ = 0;
    lastSampleDelivered_.reset();
  }
  ++starts_;
  capturing_ = true;
  world_.report(WorldEvent::Kind::microphone, "capturing");
}

void SimulatedMicrophone::ended() {
  capturing_ = false;
  world_.report(WorldEvent::Kind::microphone, "stopped");
}

platform::AudioBuffer SimulatedMicrophone::take(std::uint32_t frames) {
  const std::lock_guard lock{mutex_};
  platform::AudioBuffer buffer{format, std::vector<std::int16_t>(frames)};
  const std::size_t count = std::min(buffer.samples.size(), samples_.size() - position_);
  if (count == 0) return buffer;
  std::copy_n(samples_.begin() + static_cast<std::ptrdiff_t>(position_), count, buffer.samples.begin());
  position_ += count;
  if (position_ == samples_.size()) {
    lastSampleDelivered_ = world_.loop().uptime();
    world_.report(WorldEvent::Kind::microphone, "last sample delivered");
  }
  return buffer;
}

}  // namespace tavelo::simulated
