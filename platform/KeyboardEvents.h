#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "platform/Time.h"
#include "platform/Workspace.h"

namespace tavelo::platform {

/// Type of a keyboard event, with macOS's raw values. The last three are notices, which come whatever the
/// mask.
///
/// Taps and monitors get `holdInterrupted`, our own, when another key goes down while Fn is held. It bears
/// that key's code and flags. Modifiers, repeats of a held key and posted keys do not count. The others tell
/// a tap that the system has switched it off.
enum class KeyEventType : std::uint32_t {
  keyDown = 10,
  keyUp = 11,
  flagsChanged = 12,
  holdInterrupted = 0xFFFFFFFD,
  tapDisabledByTimeout = 0xFFFFFFFE,
  tapDisabledByUserInput = 0xFFFFFFFF,
};

/// A set of event types; bit n stands for the type with raw value n. Notices have no bit.
using KeyEventMask = std::uint64_t;
constexpr KeyEventMask maskOf(KeyEventType type) {
  return KeyEventMask{1} << static_cast<std::uint32_t>(type);
}

/// Bits of `KeyboardEvent::flags`. A Linux keyboard has Alt for option and Super for command.
namespace keyflags {
inline constexpr std::uint64_t shift = 0x20000;
inline constexpr std::uint64_t control = 0x40000;
inline constexpr std::uint64_t option = 0x80000;
inline constexpr std::uint64_t command = 0x100000;
inline constexpr std::uint64_t secondaryFn = 0x800000;
}  // namespace keyflags

/// The virtual key codes that the program knows. `function` is Fn, or the key that stands for it.
namespace keycodes {
inline constexpr std::int64_t v = 9;
inline constexpr std::int64_t function = 63;
}  // namespace keycodes

/// One keyboard event, as taps and monitors see it and as the program posts it.
struct KeyboardEvent {
  KeyEventType type = KeyEventType::keyDown;
  std::int64_t keyCode = 0;
  /// The held modifiers, as `keyflags`. A flags-changed event always carries the state of the Fn bit.
  std::uint64_t flags = 0;
  /// When the key moved, on the steady clock, not when the event was delivered.
  Uptime timestamp{};

  bool operator==(const KeyboardEvent&) const = default;
};

/// Where an event tap sits or where an event is posted, with macOS's raw values: `hid` is where events of the
/// devices come in, `session` is where they enter the user's session.
enum class EventTapLocation : std::uint32_t { hid = 0, session = 1 };
enum class EventTapPlacement : std::uint32_t { headInsert = 0, tailAppend = 1 };
enum class EventTapOptions : std::uint32_t { defaultTap = 0, listenOnly = 1 };
enum class EventSourceState : std::int32_t { combinedSession = 0, hidSystem = 1 };

/// Watches the keyboard of the whole desktop. Dropping it ends it; its callback is not called afterwards.
/// Main thread.
class EventTap {
 public:
  virtual ~EventTap() = default;

  /// Switches delivery on or off. A new tap is on.
  virtual void enable(bool on) = 0;
};

/// Connects a tap to the main run loop, including modal loops and menus. Without one, a tap delivers nothing.
/// Dropping it disconnects the tap. Main thread.
class RunLoopSource {
 public:
  virtual ~RunLoopSource() = default;
};

/// A global monitor. Dropping it ends it; its handler is not called afterwards. Main thread.
class EventMonitor {
 public:
  virtual ~EventMonitor() = default;
};

/// Watches and posts keyboard events of the whole desktop. Main thread. Callbacks and handlers are also
/// called there, while an event is delivered, and must return quickly.
class KeyboardEvents {
 public:
  using Handler = std::function<void(const KeyboardEvent&)>;

  virtual ~KeyboardEvents() = default;

  /// Makes a listen-only tap. It sees the events of `mask` for every application, including this one, and the
  /// notices that it was switched off. Null if the system refuses, usually for lack of the accessibility
  /// permission.
  virtual std::unique_ptr<EventTap> createEventTap(EventTapLocation location, EventTapPlacement placement,
                                                   EventTapOptions options, KeyEventMask mask,
                                                   Handler callback) = 0;

  /// Makes the tap's source and adds it to the main run loop. Null on failure. Drop the source before the
  /// tap.
  virtual std::unique_ptr<RunLoopSource> addRunLoopSource(EventTap& tap) = 0;

  /// Calls `handler` for each event of `mask` that goes to another application. Null if the system refuses.
  virtual std::unique_ptr<EventMonitor> addGlobalMonitor(KeyEventMask mask, Handler handler) = 0;

  /// Makes an event to post. Its flags are the modifiers held now. Absent on failure.
  virtual std::optional<KeyboardEvent> createKeyboardEvent(EventSourceState source, std::int64_t keyCode,
                                                           bool keyDown) = 0;

  /// Posts the event straight to a process. Reports no failure.
  virtual void postToProcess(ProcessIdentifier process, const KeyboardEvent& event) = 0;

  /// Posts the event as if it came in at `location`; the frontmost application receives it. Reports no
  /// failure.
  virtual void post(EventTapLocation location, const KeyboardEvent& event) = 0;
};

}  // namespace tavelo::platform
