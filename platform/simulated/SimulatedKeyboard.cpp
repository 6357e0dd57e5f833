#include "platform/simulated/SimulatedKeyboard.h"

#include <algorithm>
#include <string>
#include <utility>

#include "platform/simulated/Rules.h"
#include "platform/simulated/SimulatedAccessibility.h"
#include "platform/simulated/SimulatedWorkspace.h"
#include "platform/simulated/World.h"

namespace tavelo::simulated {
namespace {

using platform::KeyboardEvent;
using platform::KeyEventType;
using platform::Seconds;
using platform::Uptime;

bool matches(platform::KeyEventMask mask, KeyEventType type) { return (mask & platform::maskOf(type)) != 0; }

/// The watchers that exist now; those that are gone are forgotten. Watchers may come and go while one is
/// called.
template <class State>
std::vector<std::shared_ptr<State>> living(std::vector<std::weak_ptr<State>>& watchers) {
  std::erase_if(watchers, [](const auto& each) { return each.expired(); });
  std::vector<std::shared_ptr<State>> result;
  result.reserve(watchers.size());
  for (const auto& each : watchers) result.push_back(each.lock());
  return result;
}

template <class State>
std::size_t countLiving(const std::vector<std::weak_ptr<State>>& watchers) {
  return static_cast<std::size_t>(
      std::count_if(watchers.begin(), watchers.end(), [](const auto& each) { return !each.expired(); }));
}

}  // namespace

struct SimulatedKeyboard::TapState {
  platform::KeyEventMask mask = 0;
  Handler callback;
  bool enabled = true;
  bool hasSource = false;
  /// False once the program has dropped the tap; the state lives on while the callback runs.
  bool exists = true;
};

struct SimulatedKeyboard::MonitorState {
  platform::KeyEventMask mask = 0;
  Handler handler;
  bool exists = true;
};

class SimulatedKeyboard::Tap final : public platform::EventTap {
 public:
  Tap(World& world, std::shared_ptr<TapState> state) : world_(world), state_(std::move(state)) {}

  ~Tap() override {
    world_.requireMainThread("dropping an event tap");
    if (state_->hasSource) rules::broken("an event tap was dropped before its run-loop source");
    state_->exists = false;
  }

  void enable(bool on) override {
    world_.requireMainThread("EventTap::enable");
    state_->enabled = on;
  }

  const std::shared_ptr<TapState>& state() const { return state_; }

 private:
  World& world_;
  const std::shared_ptr<TapState> state_;
};

class SimulatedKeyboard::Source final : public platform::RunLoopSource {
 public:
  Source(World& world, std::shared_ptr<TapState> tap) : world_(world), tap_(std::move(tap)) {
    tap_->hasSource = true;
  }

  ~Source() override {
    world_.requireMainThread("dropping a run-loop source");
    tap_->hasSource = false;
  }

 private:
  World& world_;
  const std::shared_ptr<TapState> tap_;
};

class SimulatedKeyboard::Monitor final : public platform::EventMonitor {
 public:
  Monitor(World& world, std::shared_ptr<MonitorState> state) : world_(world), state_(std::move(state)) {}

  ~Monitor() override {
    world_.requireMainThread("dropping an event monitor");
    state_->exists = false;
  }

 private:
  World& world_;
  const std::shared_ptr<MonitorState> state_;
};

SimulatedKeyboard::SimulatedKeyboard(World& world, SimulatedWorkspace& workspace,
                                     SimulatedAccessibility& accessibility)
    : world_(world), workspace_(workspace), accessibility_(accessibility) {}

SimulatedKeyboard::~SimulatedKeyboard() {
  if (tapCount() + monitorCount() > 0) rules::broken("a key watcher outlives the desktop");
}

void SimulatedKeyboard::press(Key key) { move(key, true, world_.loop().uptime()); }

void SimulatedKeyboard::release(Key key) { move(key, false, world_.loop().uptime()); }

void SimulatedKeyboard::tap(Key key, Seconds held) {
  const Uptime now = world_.loop().uptime();
  press(key);
  releaseAt(now + platform::toUptime(held), key);
}

void SimulatedKeyboard::pressAt(Uptime moved, Key key) {
  world_.loop().asyncAt(moved, [this, moved, key] { move(key, true, moved); });
}

void SimulatedKeyboard::releaseAt(Uptime moved, Key key) {
  world_.loop().asyncAt(moved, [this, moved, key] { move(key, false, moved); });
}

void SimulatedKeyboard::setAutoRepeat(std::optional<Seconds> initial, Seconds interval) {
  repeatInitial_ = initial;
  repeatInterval_ = interval;
}

void SimulatedKeyboard::setRefusesEvents(bool keyDown, bool keyUp) {
  refusesKeyDown_ = keyDown;
  refusesKeyUp_ = keyUp;
}

void SimulatedKeyboard::move(Key key, bool down, Uptime moved) {
  world_.requireMainThread("SimulatedKeyboard");
  if (isDown(key) == down) return;
  if (down) {
    down_[key] = ++presses_;
    flags_ |= flagOf(key);
  } else {
    down_.erase(key);
    flags_ &= ~flagOf(key);
  }
  world_.reportAt(moved, WorldEvent::Kind::key, chordName(key, flags_) + (down ? " down" : " up"));
  send(eventOf(key, down, moved));
  if (down && flagOf(key) == 0 && repeatInitial_) {
    scheduleRepeat(key, presses_, moved + platform::toUptime(*repeatInitial_));
  }
}

KeyboardEvent SimulatedKeyboard::eventOf(Key key, bool down, Uptime moved) const {
  KeyboardEvent event;
  event.keyCode = static_cast<std::int64_t>(key);
  event.flags = flags_;
  event.timestamp = moved;
  event.type = down ? KeyEventType::keyDown : KeyEventType::keyUp;
  if (functionReporting_ == FunctionKeyReporting::keyDownAndUp) {
    // Such a keyboard knows no Fn modifier at all.
    event.flags &= ~platform::keyflags::secondaryFn;
    if (key == Key::function) return event;
  }
  if (flagOf(key) != 0) event.type = KeyEventType::flagsChanged;
  return event;
}

void SimulatedKeyboard::scheduleRepeat(Key key, std::uint64_t press, Uptime due) {
  const auto repeat = [this, key, press, due] {
    const auto held = down_.find(key);
    if (held == down_.end() || held->second != press) return;
    send(eventOf(key, true, due));
    scheduleRepeat(key, press, due + platform::toUptime(repeatInterval_));
  };
  world_.loop().asyncAt(due, repeat, true);
}

void SimulatedKeyboard::send(const KeyboardEvent& event) {
  if (deliveryDelay_ > Seconds{0}) {
    world_.loop().asyncAfter(deliveryDelay_, [this, event] { deliver(event); });
  } else {
    deliver(event);
  }
}

void SimulatedKeyboard::deliver(const KeyboardEvent& event) {
  for (const auto& tap : living(taps_)) {
    if (tap->exists && tap->enabled && tap->hasSource && matches(tap->mask, event.type)) tap->callback(event);
  }
  const SimulatedApplication* frontmost = workspace_.frontmost();
  if (accessibility_.trusted() && frontmost != nullptr && frontmost != &workspace_.ownApplication()) {
    for (const auto& monitor : living(monitors_)) {
      if (monitor->exists && matches(monitor->mask, event.type)) monitor->handler(event);
    }
  }
  if (SimulatedApplication* receiver = workspace_.keyReceiver()) receiver->receive(event);
}

void SimulatedKeyboard::disableTaps(KeyEventType notice) {
  for (const auto& tap : living(taps_)) {
    if (!tap->exists || !tap->enabled) continue;
    tap->enabled = false;
    if (!tap->hasSource) continue;
    KeyboardEvent event;
    event.type = notice;
    event.timestamp = world_.loop().uptime();
    tap->callback(event);
  }
}

std::size_t SimulatedKeyboard::tapCount() const { return countLiving(taps_); }

std::size_t SimulatedKeyboard::sourceCount() const {
  return static_cast<std::size_t>(std::count_if(taps_.begin(), taps_.end(), [](const auto& each) {
    const auto tap = each.lock();
    return tap && tap->hasSource;
  }));
}

std::size_t SimulatedKeyboard::monitorCount() const { return countLiving(monitors_); }

std::unique_ptr<platform::EventTap> SimulatedKeyboard::createEventTap(platform::EventTapLocation,
                                                                      platform::EventTapPlacement,
                                                                      platform::EventTapOptions,
                                                                      platform::KeyEventMask mask,
                                                                      Handler callback) {
  world_.requireMainThread("KeyboardEvents::createEventTap");
  const bool granted = tapPermission_ == TapPermission::everybody ||
                       (tapPermission_ == TapPermission::trusted && accessibility_.trusted());
  world_.report(WorldEvent::Kind::permission, granted ? "event tap created" : "event tap refused");
  if (!granted) return nullptr;
  auto state = std::make_shared<TapState>();
  state->mask = mask;
  state->callback = std::move(callback);
  taps_.push_back(state);
  return std::make_unique<Tap>(world_, std::move(state));
}

std::unique_ptr<platform::RunLoopSource> SimulatedKeyboard::addRunLoopSource(platform::EventTap& tap) {
  world_.requireMainThread("KeyboardEvents::addRunLoopSource");
  auto* own = dynamic_cast<Tap*>(&tap);
  if (own == nullptr) rules::broken("a run-loop source for another platform's tap");
  if (own->state()->hasSource) rules::broken("a second run-loop source for an event tap");
  if (refusesSource_) return nullptr;
  return std::make_unique<Source>(world_, own->state());
}

std::unique_ptr<platform::EventMonitor> SimulatedKeyboard::addGlobalMonitor(platform::KeyEventMask mask,
                                                                            Handler handler) {
  world_.requireMainThread("KeyboardEvents::addGlobalMonitor");
  if (refusesMonitors_) return nullptr;
  auto state = std::make_shared<MonitorState>();
  state->mask = mask;
  state->handler = std::move(handler);
  monitors_.push_back(state);
  return std::make_unique<Monitor>(world_, std::move(state));
}

std::optional<KeyboardEvent> SimulatedKeyboard::createKeyboardEvent(platform::EventSourceState,
                                                                    std::int64_t keyCode, bool keyDown) {
  world_.requireMainThread("KeyboardEvents::createKeyboardEvent");
  if (keyDown ? refusesKeyDown_ : refusesKeyUp_) return std::nullopt;
  KeyboardEvent event;
  event.type = keyDown ? KeyEventType::keyDown : KeyEventType::keyUp;
  event.keyCode = keyCode;
  event.flags = flags_;
  event.timestamp = world_.loop().uptime();
  return event;
}

void SimulatedKeyboard::postToProcess(platform::ProcessIdentifier process, const KeyboardEvent& event) {
  world_.requireMainThread("KeyboardEvents::postToProcess");
  record({std::nullopt, process, event});
  SimulatedApplication* application = workspace_.find(process);
  if (application != nullptr && application != workspace_.keyReceiver()) application->receive(event);
}

void SimulatedKeyboard::post(platform::EventTapLocation location, const KeyboardEvent& event) {
  world_.requireMainThread("KeyboardEvents::post");
  record({location, std::nullopt, event});
  if (location == platform::EventTapLocation::hid) deliver(event);
}

void SimulatedKeyboard::record(const PostedKey& post) {
  std::string route = "at session";
  if (post.location == platform::EventTapLocation::hid) route = "at hid";
  if (post.process) {
    const SimulatedApplication* application = workspace_.find(*post.process);
    route = "to " + (application != nullptr ? application->description()
                                            : "process " + std::to_string(*post.process));
  }
  const std::string chord = chordName(static_cast<Key>(post.event.keyCode), post.event.flags);
  const char* direction = post.event.type == KeyEventType::keyUp ? " up " : " down ";
  posts_.push_back(post);
  world_.report(WorldEvent::Kind::keystroke, "post " + chord + direction + route);
}

}  // namespace tavelo::simulated
