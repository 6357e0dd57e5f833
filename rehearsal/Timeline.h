#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/Time.h"
#include "platform/simulated/WorldEvent.h"

namespace tavelo::rehearsal {

/// One line of a rehearsal.
struct TimelineEntry {
  /// Since the story's beginning.
  platform::Uptime at{};
  /// Since the end of the latest dictation; absent before it.
  std::optional<platform::Uptime> sinceDictation;
  /// For example "key", "overlay" or "pasteboard".
  std::string kind;
  std::string text;

  /// "   2.450  +0.450  keystroke      Command-V …"; no line feed.
  std::string line() const;
};

/// Writes down what is observed in the world and on the windows, in the order in which it happens.
class Timeline final {
 public:
  explicit Timeline(std::function<void(const TimelineEntry&)> reader) : reader_(std::move(reader)) {}

  void add(const simulated::WorldEvent& event);
  void add(platform::Uptime at, const std::string& kind, const std::string& text);

  /// A dictation ended now: later entries are counted from here.
  void dictationEnded(platform::Uptime at) { dictationEnd_ = at; }

 private:
  std::function<void(const TimelineEntry&)> reader_;
  std::optional<platform::Uptime> dictationEnd_;
};

}  // namespace tavelo::rehearsal
