#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/Time.h"
#include "platform/simulated/World.h"

namespace tavelo::rehearsal {

/// One line of a rehearsal.
struct TimelineEntry {
  /// Since the story's beginning.
  platform::Uptime at{};
  /// Since the end of the latest dictation; absent until one has ended.
  std::optional<platform::Uptime> sinceDictation;
  /// For example "key", "overlay" or "pasteboard".
  std::string kind;
  std::string text;

  /// "   2.450  +0.450  keystroke      Command-V …"; no line feed.
  std::string line() const;
};

/// Turns what happens in the world and in the windows into timeline entries, in order.
class Timeline final {
 public:
  explicit Timeline(std::function<void(const TimelineEntry&)> reader) : reader_(std::move(reader)) {}

  void add(const simulated::WorldEvent& event);
  void add(platform::Uptime at, const std::string& kind, const std::string& text);

  /// A dictation ended at `at`: later entries count their time from then.
  void dictationEnded(platform::Uptime at) { dictationEnd_ = at; }

 private:
  std::function<void(const TimelineEntry&)> reader_;
  std::optional<platform::Uptime> dictationEnd_;
};

}  // namespace tavelo::rehearsal
