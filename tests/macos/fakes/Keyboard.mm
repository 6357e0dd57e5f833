#import "tests/macos/fakes/Keyboard.h"

#include <algorithm>

#include "tests/macos/fakes/Fakes.h"
#import "tests/macos/fakes/RunLoop.h"

using tavelo::fakes::FakeKey;
using tavelo::fakes::recordFunction;

@interface FakeTap : NSObject {
 @public
  CGEventTapCallBack callback;
  void* user;
  CGEventMask mask;
  bool isEnabled;
  FakeRunLoopSource* source;
}
@end
@implementation FakeTap
@end
@interface FakeKeyEvent : NSObject {
 @public
  FakeKey key;
}
@end
@implementation FakeKeyEvent
@end
@interface FakeMonitor : NSObject
@property NSEventMask mask;
@property(copy) void (^handler)(NSEvent*);
@end
@implementation FakeMonitor
@end

namespace tavelo::fakes {
namespace {

constexpr NSTimeInterval uptimeOfSystem = 1000;

struct State {
  Keyboard* keyboard;
  // Those that the product dropped stay until the end of the test, to see that nothing reaches them.
  std::vector<__weak FakeTap*> taps;
  std::vector<FakeMonitor*> monitors;
  std::vector<NSEvent*> events;
};
State* state = nullptr;

NSEvent* eventOf(const FakeKey& key, CGEventRef source) {
  NSEvent* const event = [NSEvent new];
  event.type = static_cast<NSEventType>(key.type);
  event.modifierFlags = static_cast<NSEventModifierFlags>(key.flags);
  event.timestamp = uptimeOfSystem - key.age;
  event.keyCode = static_cast<unsigned short>(key.code);
  event.ARepeat = key.isRepeat;
  event.CGEvent = source;
  state->events.push_back(event);
  return event;
}

/// Taps do not look at it.
CGEventTapProxy proxy() { return reinterpret_cast<CGEventTapProxy>(state); }

FakeKey& keyOf(CGEventRef event) { return ((__bridge FakeKeyEvent*)event)->key; }

}  // namespace

Keyboard::Keyboard() {
  state = new State{.keyboard = this, .taps = {}, .monitors = {}, .events = {}};
  NSProcessInfo* const process = [NSProcessInfo new];
  process.systemUptime = uptimeOfSystem;
  answerWith("processInfo", process);
  answer("eventWithCGEvent:", [](Call& call) {
    const auto source = call.argument<CGEventRef>(0);
    call.give((__bridge void*)eventOf(keyOf(source), source));
  });
  answer("addGlobalMonitorForEventsMatchingMask:handler:", [this](Call& call) {
    if (refuses) return;
    FakeMonitor* const monitor = [FakeMonitor new];
    monitor.mask = call.argument<NSEventMask>(0);
    monitor.handler = (__bridge void (^)(NSEvent*))call.argument<void*>(1);
    state->monitors.push_back(monitor);
    call.give((__bridge void*)monitor);
  });
  answer("removeMonitor:",
         [](Call& call) { std::erase(state->monitors, (__bridge FakeMonitor*)call.argument<void*>(0)); });
}

Keyboard::~Keyboard() {
  delete state;
  state = nullptr;
}

void Keyboard::deliver(const FakeKey& key) {
  FakeKeyEvent* const source = [FakeKeyEvent new];
  source->key = key;
  const auto event = (__bridge CGEventRef)source;
  const CGEventMask bit = CGEventMask{1} << key.type;
  for (FakeTap* tap : std::vector<__weak FakeTap*>(state->taps)) {
    if (tap == nil || !tap->isEnabled || tap->source == nil || !tap->source->isAdded_ ||
        (tap->mask & bit) == 0)
      continue;
    if (tap->callback(proxy(), key.type, event, tap->user) != event) record("the tap altered an event");
  }
  if (ownWindowIsActive) return;
  for (FakeMonitor* monitor : std::vector(state->monitors)) {
    if ((monitor.mask & bit) != 0) monitor.handler(eventOf(key, event));
  }
}

void Keyboard::timeOut() {
  for (FakeTap* tap : state->taps) {
    tap->isEnabled = false;
    tap->callback(proxy(), kCGEventTapDisabledByTimeout, (__bridge CGEventRef)[FakeKeyEvent new], tap->user);
  }
}

}  // namespace tavelo::fakes

using tavelo::fakes::state;

CFMachPortRef CGEventTapCreate(CGEventTapLocation location, CGEventTapPlacement placement,
                               CGEventTapOptions options, CGEventMask mask, CGEventTapCallBack callback,
                               void* user) {
  recordFunction("CGEventTapCreate", location, placement, options, mask);
  if (state->keyboard->refuses) return nullptr;
  FakeTap* const tap = [FakeTap new];
  tap->callback = callback;
  tap->user = user;
  tap->mask = mask;
  tap->isEnabled = true;
  state->taps.push_back(tap);
  return (__bridge_retained CFMachPortRef)tap;
}
void CGEventTapEnable(CFMachPortRef tap, bool enable) {
  recordFunction("CGEventTapEnable", enable);
  ((__bridge FakeTap*)tap)->isEnabled = enable;
}
void CFMachPortInvalidate(CFMachPortRef port) {
  recordFunction("CFMachPortInvalidate");
  ((__bridge FakeTap*)port)->callback = nullptr;
}
CFRunLoopSourceRef CFMachPortCreateRunLoopSource(CFAllocatorRef, CFMachPortRef port, CFIndex order) {
  recordFunction("CFMachPortCreateRunLoopSource", order);
  FakeRunLoopSource* const source = [FakeRunLoopSource new];
  ((__bridge FakeTap*)port)->source = source;
  return (__bridge_retained CFRunLoopSourceRef)source;
}
CGEventSourceRef CGEventSourceCreate(CGEventSourceStateID source) {
  recordFunction("CGEventSourceCreate", source);
  return (__bridge_retained CGEventSourceRef)[NSObject new];
}
CGEventRef CGEventCreateKeyboardEvent(CGEventSourceRef, CGKeyCode key, bool down) {
  if (state->keyboard->refuses) return nullptr;
  FakeKeyEvent* const event = [FakeKeyEvent new];
  // The modifiers that the user holds.
  event->key = {.type = down ? kCGEventKeyDown : kCGEventKeyUp, .code = key, .flags = kCGEventFlagMaskShift};
  return (__bridge_retained CGEventRef)event;
}
CGEventFlags CGEventGetFlags(CGEventRef event) {
  return static_cast<CGEventFlags>(tavelo::fakes::keyOf(event).flags);
}
void CGEventSetFlags(CGEventRef event, CGEventFlags flags) { tavelo::fakes::keyOf(event).flags = flags; }
int64_t CGEventGetIntegerValueField(CGEventRef event, CGEventField field) {
  return field == kCGEventSourceUserData ? tavelo::fakes::keyOf(event).userData : 0;
}
void CGEventSetIntegerValueField(CGEventRef event, CGEventField field, int64_t value) {
  if (field == kCGEventSourceUserData) tavelo::fakes::keyOf(event).userData = value;
}
void CGEventPost(CGEventTapLocation location, CGEventRef event) {
  recordFunction("CGEventPost", location);
  const FakeKey key = tavelo::fakes::keyOf(event);
  state->keyboard->posted.push_back(key);
  state->keyboard->deliver(key);
}
