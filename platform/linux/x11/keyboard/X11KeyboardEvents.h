#pragma once

#include <QObject>
#include <QTimer>
#include <deque>
#include <string>

#include "platform/KeyWatchers.h"
#include "platform/KeyboardEvents.h"
#include "platform/linux/session/ActiveWindow.h"
#include "platform/linux/x11/keyboard/HeldKeys.h"
#include "platform/linux/x11/keyboard/KeyboardMap.h"
#include "platform/linux/x11/keyboard/PasteChord.h"
#include "platform/linux/x11/keyboard/RawKeySource.h"
#include "platform/linux/x11/keyboard/XlibConnection.h"

namespace tavelo::linuxdesktop {

/// Keyboard events of an X11 desktop: watched as raw events of the input extension, posted as the test
/// extension's. Main thread, with an application object.
///
/// One physical key is reported as Fn: Right Control, or the one that `TAVELO_FN_KEY` names. V is the key
/// where V is on a Latin keyboard, whatever the layout; all other keys have codes that the program does not
/// know. A key that stays down is reported once.
///
/// Of all that could be posted, Command-V alone is: at the HID location, as the keys that paste in the
/// frontmost application, the whole chord with its key-down event. All else is absorbed, so that a chord
/// posted on several routes arrives once.
///
/// Without a display, without version 2.2 of the input extension and in a Wayland session, which hides keys
/// from X clients, everything is refused.
class X11KeyboardEvents final : public platform::KeyboardEvents {
 public:
  /// Asks `windows`, which must outlive it, which application keys go to.
  explicit X11KeyboardEvents(ActiveWindow& windows);
  ~X11KeyboardEvents() override;

  /// Whether the keys of the desktop can be seen.
  bool canWatch() const { return source_.canWatch(); }

  /// Which key of the present keyboard stands for Fn. Without a keyboard to ask, what was asked for.
  const HoldKey& holdKey() const { return map_.holdKey; }

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

 private:
  RawKeySource::Listener listener();
  void keyMoved(const RawKeySource::Move& move);
  void readMapIfChanged();
  /// Reads all that has come, also into the queue of the connection while it was asked something.
  void catchUp();
  void releaseMissedKeys();
  void queue(const platform::KeyboardEvent& event);
  void deliverQueued();
  void watchHold();

  ActiveWindow& windows_;
  const std::string holdKeyName_;
  XlibConnection connection_;
  HeldKeys held_;
  KeyboardMap map_;
  bool mapChanged_ = true;
  platform::KeyWatchers watchers_;
  /// In order, until the event loop has time for them: some are read in the midst of a request of ours.
  std::deque<platform::KeyboardEvent> events_;
  /// Runs while Fn is held: a release that nobody reports would have us listen for ever.
  QTimer holdCheck_;
  RawKeySource source_;
  PasteChord chord_;
  /// Ends first, and with it what was left to the event loop.
  QObject context_;
};

}  // namespace tavelo::linuxdesktop
