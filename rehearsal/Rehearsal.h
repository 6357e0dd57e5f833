#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "rehearsal/RehearsalAudio.h"
#include "rehearsal/Story.h"
#include "rehearsal/Timeline.h"

namespace tavelo::rehearsal {

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
