#pragma once

#include <QBasicTimer>
#include <QObject>
#include <cstdint>
#include <mutex>
#include <set>

#include "platform/Clock.h"
#include "platform/MainQueue.h"

namespace tavelo::qt {

/// The main queue on Qt's event loop. Any loop of the main thread runs it: the application's own, a nested
/// one or a modal dialog's.
///
/// One block runs per turn of the loop, so blocks that post blocks never keep input waiting. Nothing wakes up
/// while no block is due. Make and destroy it on the main thread, which needs an application object; it must
/// outlive every thread that posts.
class QtMainQueue final : public QObject, public platform::MainQueue {
 public:
  /// `clock` measures `runUntil`; it must advance as Qt's timers do.
  explicit QtMainQueue(const platform::Clock& clock);

  void async(Block block) override;
  void asyncAfter(platform::Seconds delay, Block block) override;
  bool isMainThread() const override;
  /// Returns early when the application quits.
  void runUntil(platform::Uptime deadline) override;

 protected:
  void customEvent(QEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  struct Entry {
    platform::Uptime deadline;
    std::uint64_t number;
    Block block;
  };
  struct Order {
    bool operator()(const Entry& a, const Entry& b) const;
  };

  void post(platform::Uptime delay, Block block);
  void armTimer();
  Block takeDueBlock();

  const platform::Clock& clock_;
  std::mutex mutex_;
  std::set<Entry, Order> entries_;
  std::uint64_t nextNumber_ = 0;
  /// Fires when the first entry falls due.
  QBasicTimer timer_;
};

}  // namespace tavelo::qt
