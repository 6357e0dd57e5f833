#import "platform/macos/MacKeyboardEvents.h"

#include <algorithm>
#include <utility>
#include <vector>

#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>

#import "platform/macos/KeyReading.h"

namespace tavelo::macos {
namespace {

using platform::KeyboardEvent;
using platform::KeyEventMask;
using platform::KeyEventType;

/// What a hold and its interruption are made of.
constexpr KeyEventMask holdMask =
    maskOf(KeyEventType::flagsChanged) | maskOf(KeyEventType::keyDown) | maskOf(KeyEventType::keyUp);

bool isKey(CGEventType type) {
  return type == kCGEventKeyDown || type == kCGEventKeyUp || type == kCGEventFlagsChanged;
}

/// A handler that its owner may drop while it runs.
struct Watcher {
  platform::KeyboardEvents::Handler handler;
  bool isOwned = true;

  void call(const KeyboardEvent& event) const {
    if (isOwned) handler(event);
  }
};

KeyboardEvent noticeOf(KeyboardEvent press) {
  press.type = KeyEventType::holdInterrupted;
  return press;
}

}  // namespace

/// All monitors of one keyboard. Each gets the notice that any of them, or a tap, gives rise to.
struct MacKeyboardEvents::Monitors {
  HoldWatch hold;
  std::vector<std::weak_ptr<Watcher>> watchers;

  void tell(const KeyboardEvent& notice) {
    std::erase_if(watchers, [](const auto& each) { return each.expired(); });
    // A copy: a handler may add or drop monitors.
    for (const auto& each : std::vector(watchers)) {
      if (const auto watcher = each.lock()) watcher->call(notice);
    }
  }
};

class MacKeyboardEvents::Tap final : public platform::EventTap {
 public:
  Tap(KeyEventMask mask, Handler callback, const platform::Clock& clock, std::shared_ptr<Monitors> monitors)
      : mask_(mask),
        watcher_(std::make_shared<Watcher>(Watcher{.handler = std::move(callback)})),
        clock_(clock),
        monitors_(std::move(monitors)) {}
  ~Tap() override {
    watcher_->isOwned = false;
    if (port_ == nullptr) return;
    CGEventTapEnable(port_, false);
    CFMachPortInvalidate(port_);
    CFRelease(port_);
  }

  /// Asks the system for the tap; returns whether it gave one.
  bool open(CGEventTapLocation location, CGEventTapPlacement placement, CGEventTapOptions options) {
    port_ = CGEventTapCreate(location, placement, options, mask_ | holdMask, &Tap::receive, this);
    return port_ != nullptr;
  }
  void enable(bool on) override { CGEventTapEnable(port_, on); }
  CFMachPortRef port() const { return port_; }

 private:
  static CGEventRef receive(CGEventTapProxy, CGEventType type, CGEventRef event, void* user) {
    @autoreleasepool {
      if (user != nullptr) static_cast<Tap*>(user)->take(type, event);
    }
    return event;
  }

  void take(CGEventType type, CGEventRef event) {
    // No notice of the system has a key. Nobody switches the tap on again: the monitors go on.
    const bool hasKey = isKey(type) && event != nullptr;
    NSEvent* const read = hasKey ? [NSEvent eventWithCGEvent:event] : nil;
    // Without its modifiers, it would pass for the release of Fn.
    if (isKey(type) && read == nil) return;
    const auto reading = readKey(static_cast<KeyEventType>(type), read, clock_);
    // The handler may drop this tap.
    const auto watcher = watcher_;
    const bool isWanted = !isKey(type) || (mask_ & maskOf(reading.event.type)) != 0;
    if (hold_.take(reading)) {
      const auto monitors = monitors_;
      watcher->call(noticeOf(reading.event));
      monitors->tell(noticeOf(reading.event));
    }
    if (isWanted) watcher->call(reading.event);
  }

  const KeyEventMask mask_;
  const std::shared_ptr<Watcher> watcher_;
  const platform::Clock& clock_;
  const std::shared_ptr<Monitors> monitors_;
  HoldWatch hold_;
  CFMachPortRef port_ = nullptr;
};

class MacKeyboardEvents::Source final : public platform::RunLoopSource {
 public:
  /// Takes over the caller's reference.
  explicit Source(CFRunLoopSourceRef source) : source_(source) {
    CFRunLoopAddSource(CFRunLoopGetMain(), source_, kCFRunLoopCommonModes);
  }
  ~Source() override {
    CFRunLoopRemoveSource(CFRunLoopGetMain(), source_, kCFRunLoopCommonModes);
    CFRelease(source_);
  }

 private:
  const CFRunLoopSourceRef source_;
};

class MacKeyboardEvents::Monitor final : public platform::EventMonitor {
 public:
  Monitor(std::shared_ptr<Watcher> watcher, id token) : watcher_(std::move(watcher)), token_(token) {}
  ~Monitor() override {
    watcher_->isOwned = false;
    [NSEvent removeMonitor:token_];
  }

 private:
  const std::shared_ptr<Watcher> watcher_;
  const id token_;
};

MacKeyboardEvents::MacKeyboardEvents(platform::MainQueue&, const platform::Clock& clock)
    : clock_(clock), monitors_(std::make_shared<Monitors>()) {}

MacKeyboardEvents::~MacKeyboardEvents() = default;

std::unique_ptr<platform::EventTap> MacKeyboardEvents::createEventTap(platform::EventTapLocation location,
                                                                      platform::EventTapPlacement placement,
                                                                      platform::EventTapOptions options,
                                                                      KeyEventMask mask, Handler callback) {
  auto tap = std::make_unique<Tap>(mask, std::move(callback), clock_, monitors_);
  const bool isOpen =
      tap->open(static_cast<CGEventTapLocation>(location), static_cast<CGEventTapPlacement>(placement),
                static_cast<CGEventTapOptions>(options));
  if (!isOpen) return nullptr;
  return tap;
}

std::unique_ptr<platform::RunLoopSource> MacKeyboardEvents::addRunLoopSource(platform::EventTap& tap) {
  const auto* const own = dynamic_cast<const Tap*>(&tap);
  if (own == nullptr) return nullptr;
  const CFRunLoopSourceRef source = CFMachPortCreateRunLoopSource(kCFAllocatorDefault, own->port(), 0);
  if (source == nullptr) return nullptr;
  return std::make_unique<Source>(source);
}

std::unique_ptr<platform::EventMonitor> MacKeyboardEvents::addGlobalMonitor(KeyEventMask mask,
                                                                            Handler handler) {
  const auto watcher = std::make_shared<Watcher>(Watcher{.handler = std::move(handler)});
  const auto monitors = monitors_;
  const platform::Clock* const clock = &clock_;
  const std::weak_ptr<Watcher> weak = watcher;
  const id token = [NSEvent addGlobalMonitorForEventsMatchingMask:static_cast<NSEventMask>(mask)
                                                          handler:^(NSEvent* event) {
                                                            const auto receiver = weak.lock();
                                                            if (!receiver) return;
                                                            const auto type =
                                                                static_cast<KeyEventType>(event.type);
                                                            const auto reading = readKey(type, event, *clock);
                                                            if (monitors->hold.take(reading))
                                                              monitors->tell(noticeOf(reading.event));
                                                            receiver->call(reading.event);
                                                          }];
  if (token == nil) return nullptr;
  monitors_->watchers.push_back(watcher);
  return std::make_unique<Monitor>(watcher, token);
}

std::optional<KeyboardEvent> MacKeyboardEvents::createKeyboardEvent(platform::EventSourceState source,
                                                                    std::int64_t keyCode, bool keyDown) {
  const id state = CFBridgingRelease(CGEventSourceCreate(static_cast<CGEventSourceStateID>(source)));
  const id event = CFBridgingRelease(
      CGEventCreateKeyboardEvent((__bridge CGEventSourceRef)state, static_cast<CGKeyCode>(keyCode), keyDown));
  if (event == nil) return std::nullopt;
  return KeyboardEvent{.type = keyDown ? KeyEventType::keyDown : KeyEventType::keyUp,
                       .keyCode = keyCode,
                       .flags = CGEventGetFlags((__bridge CGEventRef)event),
                       .timestamp = clock_.uptime()};
}

void MacKeyboardEvents::postToProcess(platform::ProcessIdentifier, const KeyboardEvent&) {}

void MacKeyboardEvents::post(platform::EventTapLocation location, const KeyboardEvent& event) {
  if (location != platform::EventTapLocation::hid) return;
  const id state = CFBridgingRelease(CGEventSourceCreate(kCGEventSourceStateHIDSystemState));
  const id made = CFBridgingRelease(CGEventCreateKeyboardEvent((__bridge CGEventSourceRef)state,
                                                               static_cast<CGKeyCode>(event.keyCode),
                                                               event.type == KeyEventType::keyDown));
  if (made == nil) return;
  const CGEventRef posted = (__bridge CGEventRef)made;
  CGEventSetFlags(posted, static_cast<CGEventFlags>(event.flags));
  CGEventSetIntegerValueField(posted, kCGEventSourceUserData, postedKeyMark);
  const bool pastes = event.type == KeyEventType::keyDown && event.keyCode == platform::keycodes::v &&
                      (event.flags & platform::keyflags::command) != 0;
  if (pastes && willPaste) willPaste();
  CGEventPost(kCGHIDEventTap, posted);
}

}  // namespace tavelo::macos
