#include "platform/simulated/SimulatedKeyboard.h"

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

}  // namespace

SimulatedKeyboard::SimulatedKeyboard(World& world, SimulatedWorkspace& workspace,
                                     SimulatedAccessibility& accessibility)
    : world_(world),
      workspace_(workspace),
      accessibility_(accessibility),
      watchers_({.onUse = [&world](const char* operation) { world.requireMainThread(operation); },
                 .onMistake = [](const char* mistake) { rules::broken(mistake); }}) {}

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

void SimulatedKeyboard::setAutoRepeat(Seconds initial, Seconds interval) {
  repeatInitial_ = initial;
  repeatInterval_ = interval;
}

void SimulatedKeyboard::setRefusesEvents(bool keyDown, bool keyUp) {
  refusesKeyDown_ = keyDown;
  refusesKeyUp_ = keyUp;
}

void SimulatedKeyboard::move(Key key, bool down, Uptime moved) {
  world_.requireMainThread("SimulatedKeyboard");
  if (down_.contains(key) == down) return;
  if (down) {
    down_[key] = ++presses_;
    flags_ |= flagOf(key);
  } else {
    down_.erase(key);
    flags_ &= ~flagOf(key);
  }
  world_.reportAt(moved, WorldEvent::Kind::key, chordName(key, flags_) + (down ? " down" : " up"));
  deliver(eventOf(key, down, moved));
  if (down && flagOf(key) == 0) scheduleRepeat(key, presses_, moved + platform::toUptime(repeatInitial_));
}

KeyboardEvent SimulatedKeyboard::eventOf(Key key, bool down, Uptime moved) const {
  KeyboardEvent event;
  event.keyCode = static_cast<std::int64_t>(key);
  event.flags = flags_;
  event.timestamp = moved;
  event.type = down ? KeyEventType::keyDown : KeyEventType::keyUp;
  if (functionReporting_ == FunctionKeyReporting::keyDownAndUp) {
    // Such a keyboard has no Fn modifier.
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
    deliver(eventOf(key, true, due));
    scheduleRepeat(key, press, due + platform::toUptime(repeatInterval_));
  };
  world_.loop().asyncAt(due, repeat);
}

void SimulatedKeyboard::interruptHold(Key key) {
  world_.requireMainThread("SimulatedKeyboard");
  const Uptime now = world_.loop().uptime();
  KeyboardEvent notice = eventOf(key, true, now);
  notice.type = KeyEventType::holdInterrupted;
  world_.reportAt(now, WorldEvent::Kind::key, "hold interrupted");
  tellWatchers(notice);
}

void SimulatedKeyboard::deliver(const KeyboardEvent& event) {
  tellWatchers(event);
  if (SimulatedApplication* receiver = workspace_.keyReceiver()) receiver->receive(event);
}

void SimulatedKeyboard::tellWatchers(const KeyboardEvent& event) {
  const SimulatedApplication* frontmost = workspace_.frontmost();
  const bool monitorsSeeIt =
      accessibility_.trusted() && frontmost != nullptr && frontmost != &workspace_.ownApplication();
  watchers_.deliver(event, !monitorsSeeIt);
}

void SimulatedKeyboard::disableTaps() {
  KeyboardEvent notice;
  notice.type = KeyEventType::tapDisabledByTimeout;
  notice.timestamp = world_.loop().uptime();
  watchers_.disableTaps(notice);
}

std::unique_ptr<platform::EventTap> SimulatedKeyboard::createEventTap(platform::EventTapLocation,
                                                                      platform::EventTapPlacement,
                                                                      platform::EventTapOptions,
                                                                      platform::KeyEventMask mask,
                                                                      Handler callback) {
  world_.requireMainThread("KeyboardEvents::createEventTap");
  const bool granted = accessibility_.trusted();
  world_.report(WorldEvent::Kind::permission, granted ? "event tap created" : "event tap refused");
  return granted ? watchers_.addTap(mask, std::move(callback)) : nullptr;
}

std::unique_ptr<platform::RunLoopSource> SimulatedKeyboard::addRunLoopSource(platform::EventTap& tap) {
  world_.requireMainThread("KeyboardEvents::addRunLoopSource");
  if (refusesSource_) return nullptr;
  auto source = watchers_.addSource(tap);
  if (!source) rules::broken("a run-loop source for another platform's tap");
  return source;
}

std::unique_ptr<platform::EventMonitor> SimulatedKeyboard::addGlobalMonitor(platform::KeyEventMask mask,
                                                                            Handler handler) {
  world_.requireMainThread("KeyboardEvents::addGlobalMonitor");
  return refusesMonitors_ ? nullptr : watchers_.addMonitor(mask, std::move(handler));
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
