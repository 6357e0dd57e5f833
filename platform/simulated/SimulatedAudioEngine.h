#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>

#include "platform/Audio.h"
#include "platform/simulated/SimulatedLoop.h"

namespace tavelo::simulated {

class SimulatedMicrophone;
class World;

/// Captures the simulated microphone in buffers of the size that the tap asked for. Each buffer is delivered
/// on another thread when its last frame has been heard. A second tap on a bus, or a bus other than 0, stops
/// the program.
class SimulatedAudioEngine final : public platform::AudioEngine {
 public:
  SimulatedAudioEngine(World& world, SimulatedMicrophone& microphone);
  ~SimulatedAudioEngine() override;

  platform::AudioFormat inputFormat(platform::AudioBus bus) override;
  void installTap(platform::AudioBus bus, std::uint32_t bufferSize, const platform::AudioFormat& format,
                  TapBlock block) override;
  void removeTap(platform::AudioBus bus) override;
  void prepare() override;
  std::optional<platform::PlatformError> start() override;
  void stop() override;

 private:
  std::optional<platform::Uptime> deliver();
  platform::Uptime instantOf(std::uint64_t frames) const;
  void requireBus(platform::AudioBus bus, const char* operation) const;

  World& world_;
  SimulatedMicrophone& microphone_;
  /// Guards the tap, and is held while its block runs.
  std::mutex tapMutex_;
  TapBlock tap_;
  std::uint32_t bufferSize_;
  platform::Uptime started_{};
  std::uint64_t framesHeard_ = 0;
  std::uint32_t framesOfBuffer_ = 0;
  std::unique_ptr<ForeignTicker> capture_;
};

}  // namespace tavelo::simulated
