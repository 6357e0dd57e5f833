#include "rehearsal/Timeline.h"

#include <array>
#include <cstdio>

namespace tavelo::rehearsal {
namespace {

double inSeconds(platform::Uptime time) {
  return std::chrono::duration_cast<platform::Seconds>(time).count();
}

}  // namespace

std::string TimelineEntry::line() const {
  std::array<char, 48> columns{};
  if (sinceDictation) {
    std::snprintf(columns.data(), columns.size(), "%9.3f %+9.3f  %-13s ", inSeconds(at),
                  inSeconds(*sinceDictation), kind.c_str());
  } else {
    std::snprintf(columns.data(), columns.size(), "%9.3f %9s  %-13s ", inSeconds(at), "", kind.c_str());
  }
  return columns.data() + text;
}

void Timeline::add(const simulated::WorldEvent& event) {
  add(event.time, simulated::nameOf(event.kind), event.text);
}

void Timeline::add(platform::Uptime at, const std::string& kind, const std::string& text) {
  TimelineEntry entry{at, std::nullopt, kind, text};
  if (dictationEnd_) entry.sinceDictation = at - *dictationEnd_;
  reader_(entry);
}

}  // namespace tavelo::rehearsal
