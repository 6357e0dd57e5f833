#pragma once

#include <cstdint>
#include <string>

#include "platform/Time.h"

namespace tavelo::simulated {

/// Something that really happened in the simulated world; a timeline is made of these.
struct WorldEvent {
  enum class Kind : std::uint8_t {
    /// The person moved a key.
    key,
    /// The program posted a key.
    keystroke,
    pasteboard,
    /// The program read, wrote or pressed something by accessibility.
    accessibility,
    menu,
    /// The text of a field changed, or stayed although something was pasted.
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

  /// When it happened; a key that is delivered late still has the instant at which it moved.
  platform::Uptime time{};
  Kind kind = Kind::key;
  /// Short plain English, the same at every run.
  std::string text;

  bool operator==(const WorldEvent&) const = default;
};

/// The name of the kind as it is written above.
const char* nameOf(WorldEvent::Kind kind);

}  // namespace tavelo::simulated
