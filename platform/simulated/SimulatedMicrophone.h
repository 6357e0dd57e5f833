#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/AudioBuffer.h"
#include "platform/Time.h"

namespace tavelo::simulated {

class World;

/// The input device: what it hears from each start of the engine on, and whether it can be opened. Main
/// thread, but for `take`.
class SimulatedMicrophone final {
 public:
  explicit SimulatedMicrophone(World& world);

  /// Plays `samples` (in the device's format, channels interleaved) after each start, then silence; silence
  /// alone unless set.
  void play(std::vector<std::int16_t> samples);

  /// 16 kHz and one channel unless set; a sample rate of 0 stands for no device.
  void setFormat(const platform::AudioFormat& format);
  platform::AudioFormat format() const;

  /// The engine's next starts fail with this text; absent lets them work.
  void setStartFailure(std::optional<std::string> localizedDescription);
  const std::optional<std::string>& startFailure() const { return startFailure_; }

  /// When the last sample played was delivered after the latest start; absent before that.
  std::optional<platform::Uptime> lastSampleDelivered() const;

  /// How often the engine was started.
  int starts() const { return starts_; }
  bool isCapturing() const { return capturing_; }

  /// Called by the engine when it starts and stops.
  void began();
  void ended();

  /// The next `frames` frames, which are delivered now. Called by the capture thread.
  platform::AudioBuffer take(std::uint32_t frames);

 private:
  World& world_;
  mutable std::mutex mutex_;
  platform::AudioFormat format_{16000, 1};
  std::vector<std::int16_t> samples_;
  std::size_t position_ = 0;
  std::optional<platform::Uptime> lastSampleDelivered_;
  std::optional<std::string> startFailure_;
  int starts_ = 0;
  bool capturing_ = false;
};

}  // namespace tavelo::simulated
