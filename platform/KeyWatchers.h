#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "platform/KeyboardEvents.h"

namespace tavelo::platform {

/// The event taps and monitors of a keyboard backend, and the delivery of events to them.
///
/// Watchers may be added and dropped while one of them is called, and may outlive this object. Main thread.
class KeyWatchers final {
 public:
  using Handler = KeyboardEvents::Handler;

  /// Lets a backend check how the program uses its taps, sources and monitors.
  struct Checks {
    /// Called with a description when a tap is switched or a tap, source or monitor is dropped.
    std::function<void(const char* operation)> onUse = [](const char*) {};
    /// Called with a description when the program makes a mistake, such as dropping a tap before its source.
    std::function<void(const char* mistake)> onMistake = [](const char*) {};
  };

  KeyWatchers();
  explicit KeyWatchers(Checks checks);

  std::unique_ptr<EventTap> addTap(KeyEventMask mask, Handler callback);
  /// Null for a tap of another backend.
  std::unique_ptr<RunLoopSource> addSource(EventTap& tap);
  std::unique_ptr<EventMonitor> addMonitor(KeyEventMask mask, Handler handler);

  /// Calls the taps, then the monitors. Monitors are left out when the event goes to one of our own windows.
  /// `holdInterrupted` reaches them whatever their mask.
  void deliver(const KeyboardEvent& event, bool forOwnWindow);

  /// Switches every enabled tap off and tells it so with `notice`, whatever its mask.
  void disableTaps(const KeyboardEvent& notice);

  /// How many exist now.
  std::size_t tapCount() const;
  std::size_t sourceCount() const;
  std::size_t monitorCount() const;

 private:
  struct Watcher;
  class Tap;
  class Source;
  class Monitor;
  using Watchers = std::vector<std::weak_ptr<Watcher>>;

  static std::vector<std::shared_ptr<Watcher>> existing(const Watchers& watchers);
  static void call(Watchers& watchers, const KeyboardEvent& event);
  std::shared_ptr<Watcher> add(Watchers& watchers, KeyEventMask mask, Handler handler);

  const std::shared_ptr<const Checks> checks_;
  Watchers taps_;
  Watchers monitors_;
};

}  // namespace tavelo::platform
