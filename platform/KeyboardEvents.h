#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "platform/Time.h"
#include "platform/Workspace.h"

namespace tavelo::platform {

/// Kind of a keyboard event; raw values are the platform's. The last two are notices that reach a tap's
/// callback when the system has switched the tap off.
enum class KeyEventType : std::uint32_t {
  keyDown = 10,
  keyUp = 11,
  flagsChanged = 12,
  tapDisabledByTimeout = 0xFFFFFFFE,
  tapDisabledByUserInput = 0xFFFFFFFF,
};

/// A set of event types: bit n stands for the type with raw value n.
using KeyEventMask = std::uint64_t;
constexpr KeyEventMask maskOf(KeyEventType type) {
  return KeyEventMask{1} << static_cast<std::uint32_t>(type);
}

/// Bits of `KeyboardEvent::flags`.
namespace keyflags {
inline constexpr std::uint64_t shift = 0x20000;
inline constexpr std::uint64_t control = 0x40000;
inline constexpr std::uint64_t option = 0x80000;
inline constexpr std::uint64_t command = 0x100000;
inline constexpr std::uint64_t secondaryFn = 0x800000;
}  // namespace keyflags

/// Virtual key codes that the program knows.
namespace keycodes {
inline constexpr std::int64_t v = 9;
inline constexpr std::int64_t function = 63;
}  // namespace keycodes

/// One keyboard event, as a tap and a monitor see it and as it is posted.
struct KeyboardEvent {
  KeyEventType type = KeyEventType::keyDown;
  std::int64_t keyCode = 0;
  /// Modifiers held, by `keyflags`; a flags-changed event always carries the state of the Fn bit.
  std::uint64_t flags = 0;
  /// When the key moved, on the steady clock; not when the event was delivered.
  Uptime timestamp{};

  bool operator==(const KeyboardEvent&) const = default;
};

/// Where an event tap sits or an event is posted; raw values are the platform's.
enum class EventTapLocation : std::uint32_t { hid = 0, session = 1 };
enum class EventTapPlacement : std::uint32_t { headInsert = 0, tailAppend = 1 };
enum class EventTapOptions : std::uint32_t { defaultTap = 0, listenOnly = 1 };
enum class EventSourceState : std::int32_t { combinedSession = 0, hidSystem = 1 };

/// A tap on the keyboard of the whole desktop. Dropping it ends it; no callback comes afterwards. Main
/// thread.
class EventTap {
 public:
  virtual ~EventTap() = default;

  /// Switches delivery on or off; a new tap is on.
  virtual void enable(bool on) = 0;
};

/// The tap's source on the main run loop, in the common modes (so also in modal loops and menus). Dropping it
/// takes the source off the loop; without one an enabled tap delivers nothing. Main thread.
class RunLoopSource {
 public:
  virtual ~RunLoopSource() = default;
};

/// A registered global monitor. Dropping it ends it; no handler call comes afterwards. Main thread.
class EventMonitor {
 public:
  virtual ~EventMonitor() = default;
};

/// Watches and posts keyboard events of the whole desktop. Main thread; callbacks and handlers come there
/// too, from inside event delivery, and must return quickly.
class KeyboardEvents {
 public:
  using Handler = std::function<void(const KeyboardEvent&)>;

  virtual ~KeyboardEvents() = default;

  /// A listen-only tap that sees the events of `mask` bound for every application, this one included, and the
  /// notices of its own disabling. Null when the system refuses, typically for lack of trust.
  virtual std::unique_ptr<EventTap> createEventTap(EventTapLocation location, EventTapPlacement placement,
                                                   EventTapOptions options, KeyEventMask mask,
                                                   Handler callback) = 0;

  /// Makes the tap's source and adds it to the main run loop. Null when none could be made. The source must
  /// be dropped before the tap.
  virtual std::unique_ptr<RunLoopSource> addRunLoopSource(EventTap& tap) = 0;

  /// Calls `handler` for each event of `mask` that is bound for another application. Null when refused.
  virtual std::unique_ptr<EventMonitor> addGlobalMonitor(KeyEventMask mask, Handler handler) = 0;

  /// A key event to be posted, with the modifiers held now as its flags. Absent when it cannot be made.
  virtual std::optional<KeyboardEvent> createKeyboardEvent(EventSourceState source, std::int64_t keyCode,
                                                           bool keyDown) = 0;

  /// Posts the event straight to a process. Nothing is reported.
  virtual void postToProcess(ProcessIdentifier process, const KeyboardEvent& event) = 0;

  /// Posts the event as if it came in at `location`; the frontmost application receives it. Nothing is
  /// reported.
  virtual void post(EventTapLocation location, const KeyboardEvent& event) = 0;
};

}  // namespace tavelo::platform
