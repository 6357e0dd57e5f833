#include "platform/linux/x11/keyboard/X11KeyboardEvents.h"

#include <QGuiApplication>
#include <chrono>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "platform/linux/session/SessionType.h"

namespace tavelo::linuxdesktop {
namespace {

using platform::KeyboardEvent;
using platform::KeyEventType;

constexpr std::chrono::milliseconds holdCheckInterval{1000};

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

platform::Uptime now() { return std::chrono::steady_clock::now().time_since_epoch(); }

std::optional<HeldKeys::Keys> keysDown(const XlibConnection& connection) {
  std::array<char, keyNumbers / 8> bytes{};
  if (!connection.queryKeymap(bytes)) return std::nullopt;
  HeldKeys::Keys keys;
  for (std::size_t key = 0; key < keyNumbers; ++key)
    keys.set(key, ((static_cast<unsigned>(bytes[key / 8]) >> (key % 8)) & 1U) != 0);
  return keys;
}

}  // namespace

X11KeyboardEvents::X11KeyboardEvents(ActiveWindow& windows)
    : windows_(windows),
      holdKeyName_(environment("TAVELO_FN_KEY")),
      connection_(!isWaylandSession()),
      source_(connection_, listener()),
      chord_(connection_, source_, held_) {
  holdCheck_.setInterval(holdCheckInterval);
  QObject::connect(&holdCheck_, &QTimer::timeout, &context_, [this] {
    source_.read();
    releaseMissedKeys();
    catchUp();
    deliverQueued();
  });
  map_.holdKey.asked = holdKeyName_;
  if (!source_.canWatch()) return;
  readMapIfChanged();
  // What is down already is known, and told to nobody: no key has moved.
  if (const auto down = keysDown(connection_)) held_.adopt(*down);
  watchHold();
  // What the questions above have read along with their answers.
  QMetaObject::invokeMethod(
      &context_,
      [this] {
        catchUp();
        deliverQueued();
      },
      Qt::QueuedConnection);
}

X11KeyboardEvents::~X11KeyboardEvents() = default;

RawKeySource::Listener X11KeyboardEvents::listener() {
  return {.keyMoved = [this](const RawKeySource::Move& move) { keyMoved(move); },
          .mapChanged = [this] { mapChanged_ = true; },
          .devicesChanged = [this] { releaseMissedKeys(); },
          .idle =
              [this] {
                catchUp();
                deliverQueued();
              }};
}

void X11KeyboardEvents::keyMoved(const RawKeySource::Move& move) {
  if (chord_.isOwn(move)) return;
  readMapIfChanged();
  queue(held_.move(move.key, move.down, move.at));
  watchHold();
}

void X11KeyboardEvents::readMapIfChanged() {
  if (!std::exchange(mapChanged_, false)) return;
  auto map = readKeyboardMap(connection_.display(), holdKeyName_);
  if (!map) return;
  map_ = std::move(*map);
  if (const auto event = held_.setRoles(map_.roles, now())) queue(*event);
  watchHold();
}

void X11KeyboardEvents::catchUp() {
  source_.read();
  while (mapChanged_) {
    readMapIfChanged();
    source_.read();
  }
}

void X11KeyboardEvents::releaseMissedKeys() {
  HeldKeys::Keys down;
  if (connection_.isAlive()) down = keysDown(connection_).value_or(down);
  for (const auto& event : held_.releaseAllBut(down, now())) queue(event);
  watchHold();
}

void X11KeyboardEvents::watchHold() {
  const bool held = (held_.flags() & platform::keyflags::secondaryFn) != 0;
  if (held == holdCheck_.isActive()) return;
  held ? holdCheck_.start() : holdCheck_.stop();
}

void X11KeyboardEvents::queue(const KeyboardEvent& event) {
  events_.push_back(event);
  if (events_.size() > 1) return;
  QMetaObject::invokeMethod(
      &context_, [this] { deliverQueued(); }, Qt::QueuedConnection);
}

void X11KeyboardEvents::deliverQueued() {
  while (!events_.empty()) {
    // A handler may run an event loop, which goes on with the next.
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

std::optional<KeyboardEvent> X11KeyboardEvents::createKeyboardEvent(platform::EventSourceState,
                                                                    std::int64_t keyCode, bool keyDown) {
  if (!canWatch() || keyCode != platform::keycodes::v) return std::nullopt;
  return KeyboardEvent{.type = keyDown ? KeyEventType::keyDown : KeyEventType::keyUp,
                       .keyCode = keyCode,
                       .flags = held_.flags(),
                       .timestamp = now()};
}

void X11KeyboardEvents::post(platform::EventTapLocation location, const KeyboardEvent& event) {
  const bool isPaste = event.type == KeyEventType::keyDown && event.keyCode == platform::keycodes::v &&
                       event.flags == platform::keyflags::command;
  if (location != platform::EventTapLocation::hid || !isPaste || !canWatch()) return;
  const auto window = windows_.activeWindow();
  const auto windowClass = window ? windows_.windowClass(*window) : std::nullopt;
  source_.synchronise();
  catchUp();
  chord_.press(windowClass ? pasteKeys(*windowClass) : PasteKeys::controlV, map_);
  catchUp();
}

}  // namespace tavelo::linuxdesktop
