#pragma once

#include <memory>
#include <vector>

#include "platform/KeyboardEvents.h"

namespace tavelo::linuxdesktop {

/// The taps and monitors that exist, and the delivery to them. They may come and go while one is called, and
/// outlive this. Main thread.
class KeyWatchers final {
 public:
  using Handler = platform::KeyboardEvents::Handler;

  std::unique_ptr<platform::EventTap> addTap(platform::KeyEventMask mask, Handler callback);
  /// Null for a tap of another platform.
  std::unique_ptr<platform::RunLoopSource> addSource(platform::EventTap& tap);
  std::unique_ptr<platform::EventMonitor> addMonitor(platform::KeyEventMask mask, Handler handler);

  /// Tells the taps, then the monitors unless the event is bound for a window of ours.
  void deliver(const platform::KeyboardEvent& event, bool forOwnWindow);

 private:
  struct Watcher;
  class Tap;
  class Source;
  class Monitor;

  static void call(std::vector<std::weak_ptr<Watcher>>& watchers, const platform::KeyboardEvent& event);

  std::vector<std::weak_ptr<Watcher>> taps_;
  std::vector<std::weak_ptr<Watcher>> monitors_;
};

}  // namespace tavelo::linuxdesktop
