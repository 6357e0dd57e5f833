#include "platform/linux/x11/keyboard/X11KeyboardEvents.h"

#include <QGuiApplication>
#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/linux/session/SessionType.h"
#include "platform/linux/x11/keyboard/KeyUses.h"

namespace tavelo::linuxdesktop {
namespace {

using platform::KeyboardEvent;
using platform::KeyEventType;

constexpr std::chrono::milliseconds holdCheckInterval{1000};

}  // namespace

X11KeyboardEvents::X11KeyboardEvents(ActiveWindow& windows, const std::string& holdKey)
    : windows_(windows),
      connection_(!isWaylandSession()),
      source_(connection_),
      chord_(connection_),
      wantedHoldKey_(holdKey) {
  map_.holdKey.asked = holdKey;
  if (!canWatch()) return;
  readMapIfChanged();
  // No event for keys that are down already: none of them moved.
  if (const auto down = connection_.keysDown()) held_.adopt(*down);
  holdCheck_.setInterval(holdCheckInterval);
  QObject::connect(&holdCheck_, &QTimer::timeout, &context_, [this] {
    readKeysAndMap();
    releaseMissedKeys();
    readAndDeliver();
  });
  watchHold();
  notifier_ = std::make_unique<QSocketNotifier>(connection_.fileDescriptor(), QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, &context_, [this] { readAndDeliver(); });
  // The requests above may have put events into Xlib's queue, which the notifier does not see.
  QMetaObject::invokeMethod(
      &context_, [this] { readAndDeliver(); }, Qt::QueuedConnection);
}

X11KeyboardEvents::~X11KeyboardEvents() = default;

void X11KeyboardEvents::readAndDeliver() {
  readKeysAndMap();
  deliverQueued();
}

void X11KeyboardEvents::readKeys() {
  while (const auto event = source_.next()) handle(*event);
  if (canWatch() || !notifier_->isEnabled()) return;
  // The server has gone. Its connection would stay readable for ever, and nobody will report releases.
  notifier_->setEnabled(false);
  releaseMissedKeys();
}

void X11KeyboardEvents::readKeysAndMap() {
  // Asking the server may put more events into Xlib's queue.
  do readKeys();
  while (readMapIfChanged());
  if (takeHoldKey()) readKeys();
}

void X11KeyboardEvents::setHoldKey(const std::string& name) {
  wantedHoldKey_ = name;
  if (canWatch()) return readAndDeliver();
  map_.holdKey.asked = name;
}

/// Returns whether it asked the server for anything.
bool X11KeyboardEvents::takeHoldKey() {
  if (wantedHoldKey_ == map_.holdKey.asked || !canWatch() || isHeld()) return false;
  // Not what we have heard: a key may be down that we do not know of yet, or up.
  if (const auto down = connection_.keysDown(); !down || down->any()) return true;
  if (auto map = readKeyboardMap(connection_.display(), wantedHoldKey_)) {
    take(std::move(*map));
    if (onHoldKeyChanged) onHoldKeyChanged();
  }
  return true;
}

void X11KeyboardEvents::handle(const RawKeySource::Event& event) {
  switch (event.kind) {
    case RawKeySource::Kind::mapChanged:
      // Several such events come together; the map is read once.
      mapChanged_ = true;
      break;
    case RawKeySource::Kind::devicesChanged:
      releaseMissedKeys();
      break;
    case RawKeySource::Kind::keyMoved:
      if (chord_.isOwn(event)) return;
      if (!event.down) chord_.userReleased(event.key);
      readMapIfChanged();
      moveKey(event);
      watchHold();
      break;
  }
}

void X11KeyboardEvents::moveKey(const RawKeySource::Event& event) {
  const bool interrupts = event.down && held_.wouldInterruptHold(event.key);
  const KeyboardEvent moved = held_.move(event.key, event.down, event.at);
  if (interrupts) {
    KeyboardEvent notice = moved;
    notice.type = KeyEventType::holdInterrupted;
    queue(notice);
  }
  queue(moved);
}

bool X11KeyboardEvents::readMapIfChanged() {
  if (!std::exchange(mapChanged_, false)) return false;
  if (auto map = readKeyboardMap(connection_.display(), map_.holdKey.asked)) take(std::move(*map));
  return true;
}

void X11KeyboardEvents::take(KeyboardMap map) {
  map_ = std::move(map);
  if (const auto event = held_.setRoles(map_.roles, ServerClock::now())) queue(*event);
  watchHold();
}

void X11KeyboardEvents::releaseMissedKeys() {
  const auto down = connection_.keysDown().value_or(HeldKeys::Keys());
  for (const auto& event : held_.releaseAllBut(down, ServerClock::now())) queue(event);
  watchHold();
}

void X11KeyboardEvents::watchHold() {
  if (isHeld() == holdCheck_.isActive()) return;
  isHeld() ? holdCheck_.start() : holdCheck_.stop();
}

void X11KeyboardEvents::queue(const KeyboardEvent& event) {
  events_.push_back(event);
  if (events_.size() > 1) return;
  QMetaObject::invokeMethod(
      &context_, [this] { deliverQueued(); }, Qt::QueuedConnection);
}

void X11KeyboardEvents::deliverQueued() {
  while (!events_.empty()) {
    // Removed first: a handler may run an event loop, which delivers the rest.
    const KeyboardEvent event = events_.front();
    events_.pop_front();
    watchers_.deliver(event, QGuiApplication::focusWindow() != nullptr);
  }
}

std::unique_ptr<platform::EventTap> X11KeyboardEvents::createEventTap(platform::EventTapLocation,
                                                                      platform::EventTapPlacement,
                                                                      platform::EventTapOptions,
                                                                      platform::KeyEventMask mask,
                                                                      Handler callback) {
  return canWatch() ? watchers_.addTap(mask, std::move(callback)) : nullptr;
}

std::unique_ptr<platform::RunLoopSource> X11KeyboardEvents::addRunLoopSource(platform::EventTap& tap) {
  return watchers_.addSource(tap);
}

std::unique_ptr<platform::EventMonitor> X11KeyboardEvents::addGlobalMonitor(platform::KeyEventMask mask,
                                                                            Handler handler) {
  return canWatch() ? watchers_.addMonitor(mask, std::move(handler)) : nullptr;
}

platform::KeyFacts X11KeyboardEvents::keyFacts(std::int64_t keyCode) const {
  const auto found =
      std::ranges::find_if(map_.roles, [&](const KeyRole& role) { return role.keyCode == keyCode; });
  if (found == map_.roles.end()) return {};
  return linuxdesktop::keyFacts(map_.symbols[static_cast<std::size_t>(found - map_.roles.begin())]);
}

std::optional<KeyboardEvent> X11KeyboardEvents::createKeyboardEvent(platform::EventSourceState,
                                                                    std::int64_t keyCode, bool keyDown) {
  if (!canWatch() || keyCode != platform::keycodes::v) return std::nullopt;
  return KeyboardEvent{.type = keyDown ? KeyEventType::keyDown : KeyEventType::keyUp,
                       .keyCode = keyCode,
                       .flags = held_.flags(),
                       .timestamp = ServerClock::now()};
}

void X11KeyboardEvents::post(platform::EventTapLocation location, const KeyboardEvent& event) {
  const bool isPaste = event.type == KeyEventType::keyDown && event.keyCode == platform::keycodes::v &&
                       event.flags == platform::keyflags::command;
  if (location != platform::EventTapLocation::hid || !isPaste || !canWatch()) return;
  if (mayPaste && !mayPaste()) return;
  if (onPaste) onPaste();
  const auto window = windows_.activeWindow();
  const auto windowClass = window ? windows_.windowClass(*window) : std::nullopt;
  const auto keys = windowClass ? pasteKeys(*windowClass) : PasteKeys::controlV;
  if (keys != PasteKeys::none) return pressPasteKeys(keys);
  if (onNoPasteKeys) onNoPasteKeys();
}

void X11KeyboardEvents::pressPasteKeys(PasteKeys keys) {
  connection_.synchronise();
  readKeysAndMap();
  chord_.press(keys, map_, held_);
  if (chord_.hasReleasedKeys()) {
    // The user may let go of a key before we press it again ...
    connection_.synchronise();
    readKeys();
    chord_.putBack(held_);
    // ... or while we do. `handle` then releases it.
    connection_.synchronise();
    readKeys();
  }
  chord_.end();
  connection_.synchronise();
  readKeysAndMap();
}

}  // namespace tavelo::linuxdesktop
