#include "platform/qt/QtMainQueue.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <tuple>
#include <utility>

namespace tavelo::qt {
namespace {

using platform::Seconds;
using platform::Uptime;

/// Longer than the program runs, but short enough for Qt's timers.
constexpr Seconds longestDelay{1e6};

const auto wakeEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

/// Qt's timers count whole milliseconds. Rounds up, so that none fires early.
int millisecondsFor(Uptime interval) {
  const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(interval).count();
  return static_cast<int>(std::max<std::int64_t>(milliseconds, 0));
}

}  // namespace

bool QtMainQueue::Order::operator()(const Entry& a, const Entry& b) const {
  return std::tie(a.deadline, a.number) < std::tie(b.deadline, b.number);
}

QtMainQueue::QtMainQueue(const platform::Clock& clock) : clock_(clock) {}

void QtMainQueue::async(Block block) { post(Uptime::zero(), std::move(block)); }

void QtMainQueue::asyncAfter(Seconds delay, Block block) {
  // The comparison is also false for NaN.
  post(delay > Seconds::zero() ? platform::toUptime(std::min(delay, longestDelay)) : Uptime::zero(),
       std::move(block));
}

bool QtMainQueue::isMainThread() const { return QThread::currentThread() == thread(); }

void QtMainQueue::runUntil(Uptime deadline) {
  const Uptime start = clock_.uptime();
  if (deadline <= start) return;
  QEventLoop loop;
  QTimer timer;
  timer.setSingleShot(true);
  timer.setTimerType(Qt::PreciseTimer);
  timer.callOnTimeout(&loop, [&] {
    const Uptime left = deadline - clock_.uptime();
    if (left <= Uptime::zero()) {
      loop.quit();
    } else {
      timer.start(millisecondsFor(left));
    }
  });
  timer.start(millisecondsFor(deadline - start));
  loop.exec();
}

void QtMainQueue::post(Uptime delay, Block block) {
  bool first = false;
  {
    // Read the clock under the lock, so that a later post is never due earlier.
    const std::lock_guard lock{mutex_};
    const auto entry = entries_.insert({clock_.uptime() + delay, nextNumber_++, std::move(block)}).first;
    first = entry == entries_.begin();
  }
  if (!first) return;
  if (isMainThread()) {
    armTimer();
  } else {
    QCoreApplication::postEvent(this, new QEvent(wakeEvent));
  }
}

void QtMainQueue::customEvent(QEvent* event) {
  if (event->type() == wakeEvent) armTimer();
}

void QtMainQueue::timerEvent(QTimerEvent* event) {
  if (event->timerId() != timer_.timerId()) return;
  const Block block = takeDueBlock();
  // Arm the timer first: the block may run a loop of its own, which must run the next blocks.
  armTimer();
  if (block) block();
}

void QtMainQueue::armTimer() {
  const std::lock_guard lock{mutex_};
  if (entries_.empty()) {
    timer_.stop();
  } else {
    timer_.start(millisecondsFor(entries_.begin()->deadline - clock_.uptime()), Qt::PreciseTimer, this);
  }
}

QtMainQueue::Block QtMainQueue::takeDueBlock() {
  const std::lock_guard lock{mutex_};
  if (entries_.empty() || entries_.begin()->deadline > clock_.uptime()) return nullptr;
  return std::move(entries_.extract(entries_.begin()).value().block);
}

}  // namespace tavelo::qt
