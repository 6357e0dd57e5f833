#include "platform/simulated/World.h"

#include <array>
#include <cstddef>
#include <utility>
#include <vector>

#include "platform/simulated/Rules.h"
#include "unicode/Unicode.h"

namespace tavelo::simulated {

const char* nameOf(WorldEvent::Kind kind) {
  static constexpr std::array names{
      "key",         "keystroke",  "pasteboard", "accessibility", "menu", "text",         "focus",
      "application", "permission", "microphone", "speech",        "file", "notification", "url"};
  return names.at(static_cast<std::size_t>(kind));
}

World::World(SimulatedLoop& loop) : loop_(loop) {}

void World::observe(Observer observer) {
  requireMainThread("World::observe");
  observers_.push_back(std::move(observer));
}

void World::report(WorldEvent::Kind kind, std::string text) {
  const platform::Uptime time = loop_.uptime();
  if (loop_.isMainThread()) {
    reportAt(time, kind, std::move(text));
    return;
  }
  loop_.asyncAt(time, [this, time, kind, text = std::move(text)] { reportAt(time, kind, text); });
}

void World::reportAt(platform::Uptime time, WorldEvent::Kind kind, std::string text) {
  const WorldEvent event{time, kind, std::move(text)};
  // A copy, because an observer may add another one.
  const std::vector<Observer> observers = observers_;
  for (const Observer& observer : observers) observer(event);
}

void World::requireMainThread(const char* operation) const { rules::requireMainThread(loop_, operation); }

std::string quoted(std::string_view text) {
  constexpr std::size_t mostScalars = 60;
  std::string result = "“";
  std::size_t offset = 0;
  for (std::size_t count = 0; offset < text.size(); ++count) {
    if (count == mostScalars) {
      result += "…";
      break;
    }
    const char32_t scalar = unicode::nextScalar(text, offset);
    unicode::appendScalar(result, scalar == U'\n' || scalar == U'\r' ? U'⏎' : scalar);
  }
  return result + "”";
}

}  // namespace tavelo::simulated
