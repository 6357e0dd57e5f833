#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/simulated/SimulatedLoop.h"
#include "platform/simulated/WorldEvent.h"

namespace tavelo::simulated {

/// What all parts of the desktop share: time, and the observers of what happens.
class World final {
 public:
  using Observer = std::function<void(const WorldEvent&)>;

  explicit World(SimulatedLoop& loop);
  World(const World&) = delete;
  World& operator=(const World&) = delete;

  SimulatedLoop& loop() const { return loop_; }

  /// `observer` is told of every event, on the main thread, for as long as the world lives. Main thread.
  void observe(Observer observer);

  /// Something happens now. Any thread; from a foreign one the observers hear of it by the main queue.
  void report(WorldEvent::Kind kind, std::string text);

  /// Something happened at `time`. Main thread.
  void reportAt(platform::Uptime time, WorldEvent::Kind kind, std::string text);

  /// Stops the program when the caller is on another thread than the main one.
  void requireMainThread(const char* operation) const;

 private:
  SimulatedLoop& loop_;
  std::vector<Observer> observers_;
};

/// `text` in quotation marks, line breaks as ⏎, cut short with … after 60 scalars.
std::string quoted(std::string_view text);

}  // namespace tavelo::simulated
