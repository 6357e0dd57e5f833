#pragma once

#include <memory>

#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/Time.h"
#include "platform/UserNotifications.h"
#include "platform/recognizer/Outcome.h"
#include "platform/recognizer/RecognitionTask.h"

namespace tavelo::recognizer {

/// Tells the user that a dictation waits for the engine, once for each time that the engine gets ready, and
/// withdraws that when it is. Main thread.
class WaitingNotice final {
 public:
  /// An engine that is ready sooner is not worth a word.
  static constexpr platform::Seconds delay{0.8};

  /// Both must outlive this object.
  WaitingNotice(platform::MainQueue& mainQueue, platform::UserNotifications& notifications)
      : mainQueue_(mainQueue), notifications_(notifications) {}
  WaitingNotice(const WaitingNotice&) = delete;
  WaitingNotice& operator=(const WaitingNotice&) = delete;

  platform::UserNotifications& notifications() { return notifications_; }

  /// A dictation needs the engine: tells the user if it still waits after the delay.
  void begin(const std::shared_ptr<const Outcome>& engine, const std::shared_ptr<RecognitionTask>& task);

  /// A dictation has ended before the engine was ready: tells the user now, and again when it
  /// is ready or has failed.
  void miss(const std::shared_ptr<const Outcome>& engine);

 private:
  void watch(const std::shared_ptr<const Outcome>& engine);
  void look();

  platform::MainQueue& mainQueue_;
  platform::UserNotifications& notifications_;
  /// The engine that the notice is about. Nobody waits for one that nobody keeps.
  std::weak_ptr<const Outcome> engine_;
  /// Whether the dictation that waits was announced.
  bool told_ = false;
  std::shared_ptr<void> shown_;
  bool missed_ = false;
  platform::Lifetime lifetime_;
};

}  // namespace tavelo::recognizer
