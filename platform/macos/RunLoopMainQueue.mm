#include "platform/macos/RunLoopMainQueue.h"

#include <algorithm>
#include <new>
#include <tuple>
#include <utility>

#import <CoreFoundation/CoreFoundation.h>

#include "platform/posix/SystemClock.h"

namespace tavelo::macos {
namespace {

using platform::Seconds;
using platform::Uptime;

/// Longer than the program runs, but short enough for the run loop's timers.
constexpr Seconds longestDelay{1e8};

Uptime uptime() { return posix::SystemClock{}.uptime(); }

}  // namespace

class RunLoopMainQueue::Alarm final {
 public:
  explicit Alarm(RunLoopMainQueue& queue) {
    CFRunLoopSourceContext sourceContext{};
    sourceContext.info = &queue;
    sourceContext.perform = [](void* info) { static_cast<RunLoopMainQueue*>(info)->perform(); };
    source_ = CFRunLoopSourceCreate(kCFAllocatorDefault, 0, &sourceContext);
    CFRunLoopTimerContext timerContext{};
    timerContext.info = this;
    // No block runs inside the timer's own call: the timer stands still until that returns, and a nested loop
    // would wait for it in vain.
    const auto fired = [](CFRunLoopTimerRef, void* info) { static_cast<Alarm*>(info)->ring(); };
    timer_ = CFRunLoopTimerCreate(kCFAllocatorDefault, CFAbsoluteTimeGetCurrent() + longestDelay.count(),
                                  longestDelay.count(), 0, 0, fired, &timerContext);
    if (source_ == nullptr || timer_ == nullptr) throw std::bad_alloc();
    CFRunLoopAddSource(loop_, source_, kCFRunLoopCommonModes);
    CFRunLoopAddTimer(loop_, timer_, kCFRunLoopCommonModes);
  }

  ~Alarm() {
    CFRunLoopSourceInvalidate(source_);
    CFRunLoopTimerInvalidate(timer_);
    CFRelease(source_);
    CFRelease(timer_);
  }

  Alarm(const Alarm&) = delete;
  Alarm& operator=(const Alarm&) = delete;

  /// Makes the next turn of the loop perform. Any thread.
  void ring() {
    CFRunLoopSourceSignal(source_);
    CFRunLoopWakeUp(loop_);
  }

  /// Rings after `interval`, in place of an earlier setting. Main thread.
  void ringAfter(Seconds interval) {
    CFRunLoopTimerSetNextFireDate(timer_, CFAbsoluteTimeGetCurrent() + interval.count());
  }

 private:
  const CFRunLoopRef loop_ = CFRunLoopGetMain();
  CFRunLoopSourceRef source_ = nullptr;
  CFRunLoopTimerRef timer_ = nullptr;
};

bool RunLoopMainQueue::Order::operator()(const Entry& a, const Entry& b) const {
  return std::tie(a.deadline, a.number) < std::tie(b.deadline, b.number);
}

RunLoopMainQueue::RunLoopMainQueue() : alarm_(std::make_unique<Alarm>(*this)) {}

RunLoopMainQueue::~RunLoopMainQueue() = default;

void RunLoopMainQueue::async(Block block) { post(Uptime::zero(), std::move(block)); }

void RunLoopMainQueue::asyncAfter(Seconds delay, Block block) {
  // The comparison is also false for NaN.
  post(delay > Seconds::zero() ? platform::toUptime(std::min(delay, longestDelay)) : Uptime::zero(),
       std::move(block));
}

void RunLoopMainQueue::runUntil(Uptime deadline) {
  for (Uptime left = deadline - uptime(); left > Uptime::zero(); left = deadline - uptime()) {
    // The loop may end early: its own clock is another one, and anybody may stop it.
    if (CFRunLoopRunInMode(kCFRunLoopDefaultMode, Seconds{left}.count(), false) == kCFRunLoopRunFinished)
      return;
  }
}

void RunLoopMainQueue::post(Uptime delay, Block block) {
  bool isFirst = false;
  {
    // Read the clock under the lock, so that a later post is never due earlier.
    const std::lock_guard lock{mutex_};
    const auto entry = entries_.insert({uptime() + delay, nextNumber_++, std::move(block)}).first;
    isFirst = entry == entries_.begin();
  }
  // A turn of the main thread sets the timer, whichever thread posted.
  if (isFirst) alarm_->ring();
}

void RunLoopMainQueue::perform() {
  const Block block = takeDueBlock();
  // Set the alarm first: the block may run a loop of its own, which must run the next blocks.
  setAlarm();
  if (!block) return;
  @autoreleasepool {
    block();
  }
}

RunLoopMainQueue::Block RunLoopMainQueue::takeDueBlock() {
  const std::lock_guard lock{mutex_};
  if (entries_.empty() || entries_.begin()->deadline > uptime()) return nullptr;
  return std::move(entries_.extract(entries_.begin()).value().block);
}

void RunLoopMainQueue::setAlarm() {
  Seconds interval = longestDelay;
  {
    const std::lock_guard lock{mutex_};
    if (!entries_.empty()) interval = entries_.begin()->deadline - uptime();
  }
  if (interval > Seconds::zero()) {
    alarm_->ringAfter(interval);
  } else {
    alarm_->ring();
  }
}

}  // namespace tavelo::macos
