#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "platform/KeyboardEvents.h"
#include "platform/Time.h"
#include "platform/simulated/KeyNames.h"

namespace tavelo::simulated {

class SimulatedAccessibility;
class SimulatedWorkspace;
class World;

/// How the keyboard reports Fn.
enum class FunctionKeyReporting : std::uint8_t { flagsChanged, keyDownAndUp };

/// Who is given an event tap.
enum class TapPermission : std::uint8_t { trusted, everybody, nobody };

/// A key event as the program posted it.
struct PostedKey {
  /// Where it was posted; absent when it went to a process.
  std::optional<platform::EventTapLocation> location;
  /// The process it went to; absent otherwise.
  std::optional<platform::ProcessIdentifier> process;
  platform::KeyboardEvent event;
};

/// The keyboard of the simulated desktop: what the person does on it, and what the program sees and posts.
///
/// A key reaches the taps, then the monitors (only with trust, and only while another application is in
/// front), then the application that has the keyboard, so that a watcher of both kinds gets most events
/// twice. The three routes of posting are one keyboard: what is posted at the HID location arrives like a
/// person's key, the copies at the session location and to the process that has the keyboard are absorbed.
/// Main thread.
class SimulatedKeyboard final : public platform::KeyboardEvents {
 public:
  SimulatedKeyboard(World& world, SimulatedWorkspace& workspace, SimulatedAccessibility& accessibility);
  ~SimulatedKeyboard() override;

  /// The person moves a key now; it is delivered inside the call unless a delivery delay is set. A key that
  /// is down already does not go down again, nor up when it is up.
  void press(Key key);
  void release(Key key);

  /// Presses now and releases after `held`.
  void tap(Key key, platform::Seconds held = platform::Seconds{0.05});

  /// The same at `moved`, which is also the time stamp however late the main thread gets to it.
  void pressAt(platform::Uptime moved, Key key);
  void releaseAt(platform::Uptime moved, Key key);

  bool isDown(Key key) const { return down_.contains(key); }

  /// A key other than a modifier that stays down repeats: first after `initial`, then every `interval`. On
  /// with 0.5 s and 0.05 s unless set; absent switches it off.
  void setAutoRepeat(std::optional<platform::Seconds> initial,
                     platform::Seconds interval = platform::Seconds{0.05});

  void setFunctionKeyReporting(FunctionKeyReporting reporting) { functionReporting_ = reporting; }

  /// How late the events of keys moved from now on are delivered; their time stamps tell when they moved.
  void setDeliveryDelay(platform::Seconds delay) { deliveryDelay_ = delay; }

  void setTapPermission(TapPermission permission) { tapPermission_ = permission; }
  void setRefusesRunLoopSource(bool refuses) { refusesSource_ = refuses; }
  void setRefusesMonitors(bool refuses) { refusesMonitors_ = refuses; }

  /// Which events for posting cannot be created.
  void setRefusesEvents(bool keyDown, bool keyUp);

  /// The system switches every enabled tap off and tells each so, once.
  void disableTaps(platform::KeyEventType notice = platform::KeyEventType::tapDisabledByTimeout);

  /// What exists at present.
  std::size_t tapCount() const;
  std::size_t sourceCount() const;
  std::size_t monitorCount() const;

  /// Everything the program posted, in order.
  const std::vector<PostedKey>& posts() const { return posts_; }

  std::unique_ptr<platform::EventTap> createEventTap(platform::EventTapLocation location,
                                                     platform::EventTapPlacement placement,
                                                     platform::EventTapOptions options,
                                                     platform::KeyEventMask mask, Handler callback) override;
  std::unique_ptr<platform::RunLoopSource> addRunLoopSource(platform::EventTap& tap) override;
  std::unique_ptr<platform::EventMonitor> addGlobalMonitor(platform::KeyEventMask mask,
                                                           Handler handler) override;
  std::optional<platform::KeyboardEvent> createKeyboardEvent(platform::EventSourceState source,
                                                             std::int64_t keyCode, bool keyDown) override;
  void postToProcess(platform::ProcessIdentifier process, const platform::KeyboardEvent& event) override;
  void post(platform::EventTapLocation location, const platform::KeyboardEvent& event) override;

 private:
  struct TapState;
  struct MonitorState;
  class Tap;
  class Source;
  class Monitor;

  void move(Key key, bool down, platform::Uptime moved);
  platform::KeyboardEvent eventOf(Key key, bool down, platform::Uptime moved) const;
  void scheduleRepeat(Key key, std::uint64_t press, platform::Uptime due);
  void send(const platform::KeyboardEvent& event);
  void deliver(const platform::KeyboardEvent& event);
  void record(const PostedKey& post);

  World& world_;
  SimulatedWorkspace& workspace_;
  SimulatedAccessibility& accessibility_;
  /// Keys that are down, with the number of the press.
  std::map<Key, std::uint64_t> down_;
  std::uint64_t presses_ = 0;
  std::uint64_t flags_ = 0;
  std::optional<platform::Seconds> repeatInitial_ = platform::Seconds{0.5};
  platform::Seconds repeatInterval_{0.05};
  FunctionKeyReporting functionReporting_ = FunctionKeyReporting::flagsChanged;
  platform::Seconds deliveryDelay_{0};
  TapPermission tapPermission_ = TapPermission::trusted;
  bool refusesSource_ = false;
  bool refusesMonitors_ = false;
  bool refusesKeyDown_ = false;
  bool refusesKeyUp_ = false;
  std::vector<std::weak_ptr<TapState>> taps_;
  std::vector<std::weak_ptr<MonitorState>> monitors_;
  std::vector<PostedKey> posts_;
};

}  // namespace tavelo::simulated
