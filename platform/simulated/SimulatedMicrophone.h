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

/// The input device: what it hears after each start of the engine, and whether it can be opened. Main thread,
/// except `take`.
class SimulatedMicrophone final {
 public:
  static constexpr platform::AudioFormat format{16000, 1};

  explicit SimulatedMicrophone(World& world);

  /// Plays `samples` after each start, followed by silence. The default is silence.
  void play(std::vector<std::int16_t> samples);

  /// Starts of the engine fail with this text; absent lets them work.
  void setStartFailure(std::optional<std::string> localizedDescription);
  const std::optional<std::string>& startFailure() const { return startFailure_; }

  /// When the last of the samples to play was delivered after the latest start; absent until then.
  std::optional<platform::Uptime> lastSampleDelivered() const;

  /// How often the engine was started.
  int starts() const { return starts_; }
  bool isCapturing() const { return capturing_; }
  /// Whether somebody has asked for what it hears.
  bool hasTap() const { return hasTap_; }

  /// The engine calls these when it starts and stops.
  void began();
  void ended();
  void setHasTap(bool hasTap) { hasTap_ = hasTap; }

  /// Returns the next `frames` frames. The capture thread calls this when it delivers them.
  platform::AudioBuffer take(std::uint32_t frames);

 private:
  World& world_;
  mutable std::mutex mutex_;
  std::vector<std::int16_t> samples_;
  std::size_t position_ = 0;
  std::optional<platform::Uptime> lastSampleDelivered_;
  std::optional<std::string> startFailure_;
  int starts_ = 0;
  bool capturing_ = false;
  bool hasTap_ = false;
};

}  // namespace tavelo::simulated
