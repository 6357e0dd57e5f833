#pragma once

#include <memory>
#include <vector>

#include "platform/KeyboardEvents.h"

namespace tavelo::platform {

/// The taps and monitors that exist, and the delivery to them. They may come and go while one is called, and
/// outlive this. Main thread.
class KeyWatchers final {
 public:
  using Handler = KeyboardEvents::Handler;

  std::unique_ptr<EventTap> addTap(KeyEventMask mask, Handler callback);
  /// Null for a tap of another platform.
  std::unique_ptr<RunLoopSource> addSource(EventTap& tap);
  std::unique_ptr<EventMonitor> addMonitor(KeyEventMask mask, Handler handler);

  /// Tells the taps, then the monitors unless the event is bound for a window of ours.
  void deliver(const KeyboardEvent& event, bool forOwnWindow);

 private:
  struct Watcher;
  class Tap;
  class Source;
  class Monitor;

  static void call(std::vector<std::weak_ptr<Watcher>>& watchers, const KeyboardEvent& event);

  std::vector<std::weak_ptr<Watcher>> taps_;
  std::vector<std::weak_ptr<Watcher>> monitors_;
};

}  // namespace tavelo::platform
