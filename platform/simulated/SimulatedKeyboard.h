#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "platform/KeyWatchers.h"
#include "platform/KeyboardEvents.h"
#include "platform/Time.h"
#include "platform/simulated/KeyNames.h"

namespace tavelo::simulated {

class SimulatedAccessibility;
class SimulatedWorkspace;
class World;

/// How the keyboard reports Fn.
enum class FunctionKeyReporting : std::uint8_t { flagsChanged, keyDownAndUp };

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
/// A key goes to the taps, then to the monitors (only with trust, and only while another application is in
/// front), then to the application that has the keyboard. A program with a tap and a monitor therefore gets
/// most events twice. A key posted at the HID location arrives like a person's key; the copies posted at the
/// session location and to the process that has the keyboard are absorbed. Main thread.
class SimulatedKeyboard final : public platform::KeyboardEvents {
 public:
  SimulatedKeyboard(World& world, SimulatedWorkspace& workspace, SimulatedAccessibility& accessibility);
  ~SimulatedKeyboard() override;

  /// The person moves a key now; the event is delivered inside the call. Pressing a key that is down, or
  /// releasing one that is up, does nothing.
  void press(Key key);
  void release(Key key);

  /// Presses now and releases after `held`.
  void tap(Key key, platform::Seconds held = platform::Seconds{0.05});

  /// The same at `moved`. The event carries that time even if a busy main thread delivers it later.
  void pressAt(platform::Uptime moved, Key key);
  void releaseAt(platform::Uptime moved, Key key);

  /// Tells the program that another key went down while Fn was held, as a real keyboard would. The
  /// applications see nothing of it. This keyboard never says so by itself.
  void interruptHold(Key key = Key::c);

  /// A held key that is not a modifier repeats: first after `initial`, then every `interval`. The default is
  /// 0.5 s and 0.05 s.
  void setAutoRepeat(platform::Seconds initial, platform::Seconds interval);

  void setFunctionKeyReporting(FunctionKeyReporting reporting) { functionReporting_ = reporting; }

  void setRefusesRunLoopSource(bool refuses) { refusesSource_ = refuses; }
  void setRefusesMonitors(bool refuses) { refusesMonitors_ = refuses; }

  /// Makes `createKeyboardEvent` fail for key-down or key-up events.
  void setRefusesEvents(bool keyDown, bool keyUp);

  /// The system switches every enabled tap off, as after a time-out, and tells each one so.
  void disableTaps();

  /// How many exist now.
  std::size_t tapCount() const { return watchers_.tapCount(); }
  std::size_t sourceCount() const { return watchers_.sourceCount(); }
  std::size_t monitorCount() const { return watchers_.monitorCount(); }

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
  void move(Key key, bool down, platform::Uptime moved);
  platform::KeyboardEvent eventOf(Key key, bool down, platform::Uptime moved) const;
  void scheduleRepeat(Key key, std::uint64_t press, platform::Uptime due);
  void deliver(const platform::KeyboardEvent& event);
  void tellWatchers(const platform::KeyboardEvent& event);
  void record(const PostedKey& post);

  World& world_;
  SimulatedWorkspace& workspace_;
  SimulatedAccessibility& accessibility_;
  /// The keys that are down, each with the number of its press.
  std::map<Key, std::uint64_t> down_;
  std::uint64_t presses_ = 0;
  std::uint64_t flags_ = 0;
  platform::Seconds repeatInitial_{0.5};
  platform::Seconds repeatInterval_{0.05};
  FunctionKeyReporting functionReporting_ = FunctionKeyReporting::flagsChanged;
  bool refusesSource_ = false;
  bool refusesMonitors_ = false;
  bool refusesKeyDown_ = false;
  bool refusesKeyUp_ = false;
  platform::KeyWatchers watchers_;
  std::vector<PostedKey> posts_;
};

}  // namespace tavelo::simulated
