#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Time.h"
#include "platform/simulated/SimulatedLoop.h"

namespace tavelo::simulated {

/// Something that happened in the simulated world; timelines consist of these.
struct WorldEvent {
  enum class Kind : std::uint8_t {
    /// The person moved a key.
    key,
    /// The program posted a key.
    keystroke,
    pasteboard,
    /// The program read, wrote or pressed something through accessibility.
    accessibility,
    menu,
    /// A field's text changed, or a paste changed nothing.
    text,
    focus,
    application,
    permission,
    microphone,
    speech,
    file,
    notification,
    url,
  };

  /// When it happened; for a key, when it moved.
  platform::Uptime time{};
  Kind kind = Kind::key;
  /// Short plain English, the same in every run.
  std::string text;
};

/// The kind's name, spelt as above.
const char* nameOf(WorldEvent::Kind kind);

/// What all parts of the desktop share: time, and the observers of events.
class World final {
 public:
  using Observer = std::function<void(const WorldEvent&)>;

  explicit World(SimulatedLoop& loop);
  World(const World&) = delete;
  World& operator=(const World&) = delete;

  SimulatedLoop& loop() const { return loop_; }

  /// Calls `observer` on the main thread for every event, as long as the world lives. Main thread.
  void observe(Observer observer);

  /// Something happens now. Any thread; observers of an event from another thread are called through the main
  /// queue.
  void report(WorldEvent::Kind kind, std::string text);

  /// Something happened at `time`. Main thread.
  void reportAt(platform::Uptime time, WorldEvent::Kind kind, std::string text);

  /// Stops the program if the caller is not on the main thread.
  void requireMainThread(const char* operation) const;

 private:
  SimulatedLoop& loop_;
  std::vector<Observer> observers_;
};

/// `text` in quotation marks, with line breaks shown as ⏎, and cut with … after 60 scalars.
std::string quoted(std::string_view text);

}  // namespace tavelo::simulated
