#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <deque>
#include <functional>
#include <memory>

#include "platform/KeyFacts.h"
#include "platform/KeyWatchers.h"
#include "platform/KeyboardEvents.h"
#include "platform/linux/session/ActiveWindow.h"
#include "platform/linux/x11/XlibConnection.h"
#include "platform/linux/x11/keyboard/HeldKeys.h"
#include "platform/linux/x11/keyboard/KeyboardMap.h"
#include "platform/linux/x11/keyboard/PasteChord.h"
#include "platform/linux/x11/keyboard/RawKeySource.h"

namespace tavelo::linuxdesktop {

/// Keyboard events of an X11 desktop. It watches raw events of the input extension and posts events through
/// the test extension. Main thread, with an application object.
///
/// One physical key is reported as Fn: Right Control, or the key that the user chose. V is the physical V key
/// of a Latin keyboard, whatever the layout; all other keys have codes that the program does not know. A key
/// that stays down is reported once. Every key but a modifier interrupts the hold.
///
/// Only Command-V can be posted, and only at the HID location: the key-down event presses and releases all
/// keys that paste in the frontmost application. Everything else is absorbed, so that a chord posted on
/// several routes arrives once.
///
/// Everything is refused without a display, without version 2.2 of the input extension, and in a Wayland
/// session, which hides keys from X clients.
class X11KeyboardEvents final : public platform::KeyboardEvents {
 public:
  /// `windows` tells which application gets the keys. It must outlive this object. `holdKey` names the key
  /// that stands for Fn, as `setHoldKey` does.
  explicit X11KeyboardEvents(ActiveWindow& windows, const std::string& holdKey = {});
  ~X11KeyboardEvents() override;

  /// Whether the keys of the desktop can be seen.
  bool canWatch() const { return source_.canWatch(); }

  /// Has another key stand for Fn: a keysym or the name of a key; empty for Right Control. It does as soon as
  /// no key is down, so that it neither ends a hold nor begins one.
  void setHoldKey(const std::string& name);

  /// Called when another key stands for Fn.
  std::function<void()> onHoldKeyChanged;

  /// The key that stands for Fn on the current keyboard. Without a keyboard, only the configured name is set.
  const HoldKey& holdKey() const { return map_.holdKey; }

  /// The key that events with this code are about, as a hold key.
  platform::KeyFacts keyFacts(std::int64_t keyCode) const;

  std::unique_ptr<platform::EventTap> createEventTap(platform::EventTapLocation location,
                                                     platform::EventTapPlacement placement,
                                                     platform::EventTapOptions options,
                                                     platform::KeyEventMask mask, Handler callback) override;
  std::unique_ptr<platform::RunLoopSource> addRunLoopSource(platform::EventTap& tap) override;
  std::unique_ptr<platform::EventMonitor> addGlobalMonitor(platform::KeyEventMask mask,
                                                           Handler handler) override;
  /// Absent for keys other than V.
  std::optional<platform::KeyboardEvent> createKeyboardEvent(platform::EventSourceState source,
                                                             std::int64_t keyCode, bool keyDown) override;
  void postToProcess(platform::ProcessIdentifier, const platform::KeyboardEvent&) override {}
  void post(platform::EventTapLocation location, const platform::KeyboardEvent& event) override;

  /// Asked before a paste; if it says no, nothing is posted.
  std::function<bool()> mayPaste;

  /// Called right before the keys that paste are pressed, or `onNoPasteKeys` is called.
  std::function<void()> onPaste;

  /// Called in place of pressing keys when the application in front pastes with none.
  std::function<void()> onNoPasteKeys;

 private:
  /// The way of an event: the source reads it, `handle` updates our state and queues keyboard events, and the
  /// event loop delivers those.
  void readAndDeliver();
  void readKeys();
  void readKeysAndMap();
  void handle(const RawKeySource::Event& event);
  void moveKey(const RawKeySource::Event& event);
  bool readMapIfChanged();
  bool takeHoldKey();
  void take(KeyboardMap map);
  void releaseMissedKeys();
  bool isHeld() const { return (held_.flags() & platform::keyflags::secondaryFn) != 0; }
  void watchHold();
  void queue(const platform::KeyboardEvent& event);
  void deliverQueued();
  void pressPasteKeys(PasteKeys keys);

  ActiveWindow& windows_;
  XlibConnection connection_;
  RawKeySource source_;
  PasteChord chord_;
  HeldKeys held_;
  KeyboardMap map_;
  bool mapChanged_ = true;
  /// The hold key that was asked for last. The map has it once no key is down.
  std::string wantedHoldKey_;
  platform::KeyWatchers watchers_;
  /// Events for the event loop to deliver, in order. Some are read in the middle of `post`.
  std::deque<platform::KeyboardEvent> events_;
  /// Runs while Fn is held: if its release got lost, a dictation would never end.
  QTimer holdCheck_;
  std::unique_ptr<QSocketNotifier> notifier_;
  /// Destroyed first, which cancels what was left to the event loop.
  QObject context_;
};

}  // namespace tavelo::linuxdesktop
