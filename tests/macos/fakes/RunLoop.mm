// A run loop of the main thread that works: sources, timers, nested runs and other threads that wake it. It
// keeps the system's rules that a loop of its own could break: a source performs once a turn, and a timer
// does not fire inside its own call.
#import "tests/macos/fakes/RunLoop.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <vector>

#import <Foundation/Foundation.h>

#include "tests/macos/fakes/Fakes.h"

@implementation FakeRunLoopSource
@end

@interface FakeRunLoopTimer : NSObject {
 @public
  CFRunLoopTimerContext context_;
  CFRunLoopTimerCallBack callback_;
  CFAbsoluteTime fireDate_;
  CFTimeInterval interval_;
  bool isFiring_;
}
@end
@implementation FakeRunLoopTimer
@end

const CFRunLoopMode kCFRunLoopCommonModes = (__bridge CFStringRef) @"kCFRunLoopCommonModes";
const CFRunLoopMode kCFRunLoopDefaultMode = (__bridge CFStringRef) @"kCFRunLoopDefaultMode";

namespace {

struct Loop {
  std::recursive_mutex mutex;
  std::condition_variable_any changed;
  std::vector<FakeRunLoopSource*> sources;
  std::vector<FakeRunLoopTimer*> timers;
};

Loop& loop() {
  static auto* const loop = new Loop;
  return *loop;
}

FakeRunLoopSource* sourceOf(CFRunLoopSourceRef source) { return (__bridge FakeRunLoopSource*)source; }
FakeRunLoopTimer* timerOf(CFRunLoopTimerRef timer) { return (__bridge FakeRunLoopTimer*)timer; }

/// One turn without waiting; the lock is held, except inside the callbacks.
void turn(std::unique_lock<std::recursive_mutex>& lock) {
  for (FakeRunLoopTimer* each : std::vector(loop().timers)) {
    if (each->isFiring_ || each->fireDate_ > CFAbsoluteTimeGetCurrent()) continue;
    each->isFiring_ = true;
    each->fireDate_ += each->interval_;
    lock.unlock();
    each->callback_((__bridge CFRunLoopTimerRef)each, each->context_.info);
    lock.lock();
    each->isFiring_ = false;
  }
  for (FakeRunLoopSource* each : std::vector(loop().sources)) {
    if (!each->isSignalled_) continue;
    each->isSignalled_ = false;
    lock.unlock();
    each->context_.perform(each->context_.info);
    lock.lock();
  }
}

CFAbsoluteTime nextDate(CFAbsoluteTime end) {
  for (FakeRunLoopTimer* each : loop().timers) {
    if (!each->isFiring_) end = std::min(end, each->fireDate_);
  }
  const bool isDue = std::ranges::any_of(loop().sources, [](auto each) { return each->isSignalled_; });
  return isDue ? 0 : end;
}

}  // namespace

CFAbsoluteTime CFAbsoluteTimeGetCurrent() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

CFRunLoopRef CFRunLoopGetMain() { return reinterpret_cast<CFRunLoopRef>(&loop()); }
void CFRunLoopWakeUp(CFRunLoopRef) { loop().changed.notify_all(); }

CFRunLoopRunResult CFRunLoopRunInMode(CFRunLoopMode mode, CFTimeInterval seconds, Boolean) {
  EXPECT_EQ(mode, kCFRunLoopDefaultMode);
  std::unique_lock lock(loop().mutex);
  if (loop().sources.empty() && loop().timers.empty()) return kCFRunLoopRunFinished;
  const CFAbsoluteTime end = CFAbsoluteTimeGetCurrent() + seconds;
  do {
    @autoreleasepool {
      turn(lock);
    }
    const std::chrono::duration<double> wait(nextDate(end) - CFAbsoluteTimeGetCurrent());
    if (wait.count() > 0) loop().changed.wait_for(lock, wait);
  } while (CFAbsoluteTimeGetCurrent() < end);
  return kCFRunLoopRunTimedOut;
}

CFRunLoopSourceRef CFRunLoopSourceCreate(CFAllocatorRef, CFIndex, CFRunLoopSourceContext* context) {
  FakeRunLoopSource* const source = [FakeRunLoopSource new];
  source->context_ = *context;
  return (__bridge_retained CFRunLoopSourceRef)source;
}
void CFRunLoopSourceSignal(CFRunLoopSourceRef source) {
  const std::lock_guard lock(loop().mutex);
  sourceOf(source)->isSignalled_ = true;
}
void CFRunLoopSourceInvalidate(CFRunLoopSourceRef source) {
  const std::lock_guard lock(loop().mutex);
  sourceOf(source)->isAdded_ = false;
  std::erase(loop().sources, sourceOf(source));
}
void CFRunLoopAddSource(CFRunLoopRef, CFRunLoopSourceRef source, CFRunLoopMode mode) {
  tavelo::fakes::recordFunction("CFRunLoopAddSource", tavelo::fakes::describe(mode));
  const std::lock_guard lock(loop().mutex);
  // Other modes stand still while a menu or an alert is open.
  EXPECT_EQ(mode, kCFRunLoopCommonModes);
  sourceOf(source)->isAdded_ = true;
  loop().sources.push_back(sourceOf(source));
}
void CFRunLoopRemoveSource(CFRunLoopRef, CFRunLoopSourceRef source, CFRunLoopMode mode) {
  tavelo::fakes::recordFunction("CFRunLoopRemoveSource", tavelo::fakes::describe(mode));
  CFRunLoopSourceInvalidate(source);
}

CFRunLoopTimerRef CFRunLoopTimerCreate(CFAllocatorRef, CFAbsoluteTime fireDate, CFTimeInterval interval,
                                       CFOptionFlags, CFIndex, CFRunLoopTimerCallBack callback,
                                       CFRunLoopTimerContext* context) {
  FakeRunLoopTimer* const timer = [FakeRunLoopTimer new];
  timer->context_ = *context;
  timer->callback_ = callback;
  timer->fireDate_ = fireDate;
  timer->interval_ = interval;
  EXPECT_GT(interval, 0) << "it would end with its first firing";
  return (__bridge_retained CFRunLoopTimerRef)timer;
}
void CFRunLoopAddTimer(CFRunLoopRef, CFRunLoopTimerRef timer, CFRunLoopMode mode) {
  const std::lock_guard lock(loop().mutex);
  EXPECT_EQ(mode, kCFRunLoopCommonModes);
  loop().timers.push_back(timerOf(timer));
}
void CFRunLoopTimerSetNextFireDate(CFRunLoopTimerRef timer, CFAbsoluteTime fireDate) {
  const std::lock_guard lock(loop().mutex);
  timerOf(timer)->fireDate_ = fireDate;
}
void CFRunLoopTimerInvalidate(CFRunLoopTimerRef timer) {
  const std::lock_guard lock(loop().mutex);
  std::erase(loop().timers, timerOf(timer));
}
