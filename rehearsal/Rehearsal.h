#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/MainQueue.h"
#include "platform/Speech.h"
#include "platform/Time.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "rehearsal/Story.h"
#include "rehearsal/Timeline.h"

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

/// How a rehearsal ended.
struct RehearsalResult {
  /// What was not as the story says; one line each.
  std::vector<std::string> failures;
  /// The text of every field, by "application/field".
  std::map<std::string, std::string> fields;
  /// The finished texts in the history file, newest first.
  std::vector<std::string> history;
};

/// Plays `story` with the real services on a simulated desktop and tells `reader` of every entry of the
/// timeline as it happens. In virtual time, unless there is `audio`: then in real time, without what the
/// story has its recogniser hear, the dictation ends `releaseAfter` the last sample, and what depends on the
/// words is not checked. Main thread; returns when the story is over.
RehearsalResult rehearse(const Story& story, const std::optional<RehearsalAudio>& audio,
                         const std::function<void(const TimelineEntry&)>& reader);

}  // namespace tavelo::rehearsal
