#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/simulated/SimulatedDesktop.h"
#include "rehearsal/Story.h"
#include "rehearsal/Timeline.h"

namespace tavelo::rehearsal {

/// Real speech to play instead of a story's script.
struct RehearsalAudio {
  /// 16 kHz, mono: what the microphone hears from the start of the dictation.
  std::vector<std::int16_t> samples;
  /// Makes the recogniser.
  std::function<std::unique_ptr<platform::Speech>(platform::MainQueue&)> speech;
  /// From the last sample to the release of the key.
  platform::Seconds releaseAfter{1.0};
  /// A recogniser with a thread of its own needs real time.
  simulated::DesktopOptions::Time time = simulated::DesktopOptions::Time::realTime;
};

/// How a rehearsal ended.
struct RehearsalResult {
  /// Each deviation from the story, in one line.
  std::vector<std::string> failures;
  /// The text of every field, by "application/field".
  std::map<std::string, std::string> fields;
  /// The finished texts in the history file, newest first.
  std::vector<std::string> history;
};

/// Plays `story` with the real services on a simulated desktop and calls `reader` for every timeline entry as
/// it happens. Returns when the story is over. Main thread.
///
/// Without `audio` this takes place in virtual time. With `audio` it takes place in real time; the steps that
/// say what the recogniser hears, and all expectations, are skipped, and the dictation ends `releaseAfter`
/// the last sample.
RehearsalResult rehearse(const Story& story, const std::optional<RehearsalAudio>& audio,
                         const std::function<void(const TimelineEntry&)>& reader);

}  // namespace tavelo::rehearsal
