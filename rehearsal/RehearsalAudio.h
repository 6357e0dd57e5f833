#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/MainQueue.h"
#include "platform/Speech.h"
#include "platform/Time.h"
#include "platform/simulated/SimulatedDesktop.h"

namespace tavelo::rehearsal {

/// Real speech in place of a story's script.
struct RehearsalAudio {
  /// 16 kHz, mono: what the microphone hears from the start of the dictation.
  std::vector<std::int16_t> samples;
  /// Makes the recogniser.
  std::function<std::unique_ptr<platform::Speech>(platform::MainQueue&)> speech;
  /// From the last sample to the release of the key.
  platform::Seconds releaseAfter{1.0};
  /// A recogniser that works on a thread of its own needs real time.
  simulated::DesktopOptions::Time time = simulated::DesktopOptions::Time::realTime;
};

/// The samples of a WAV file's bytes (16 kHz, mono, 16 bit), or why there are none, in one clause. Any
/// thread.
std::variant<std::vector<std::int16_t>, std::string> parseSamples(std::string_view wav);

}  // namespace tavelo::rehearsal
