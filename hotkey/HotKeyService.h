#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "hotkey/HotKeyAction.h"
#include "platform/KeyboardEvents.h"
#include "platform/Time.h"

namespace tavelo {

/// Turns holding Fn and pressing Control-Option-V into actions, whichever application has the focus. Another
/// key pressed during the hold cancels it, if the platform tells of it.
///
/// An event tap and three global monitors run side by side. The tap also sees keys that go to this program;
/// the monitors still work if the system refuses or disables the tap. Most keys therefore arrive twice, and
/// the second copy has no effect. Only listens: every key still reaches the focused application. Main thread
/// only. The watchers end with the service.
class HotKeyService final {
 public:
  /// Watches the current platform's keyboard.
  HotKeyService();

  /// Watches `keyboardEvents`, which must outlive the service.
  explicit HotKeyService(platform::KeyboardEvents& keyboardEvents);

  HotKeyService(const HotKeyService&) = delete;
  HotKeyService& operator=(const HotKeyService&) = delete;

  /// Installs the watchers that are not installed yet. If the system refuses one, nothing is reported; a
  /// later call tries again.
  void start();

  /// Called for every accepted Fn press, Fn release and toggle, and once for a hold that was interrupted; the
  /// release after that is not reported. Called during keyboard-event delivery. Must be quick.
  std::function<void(HotKeyAction)> onAction;

  /// Called after `onAction(toggle)`.
  std::function<void()> onTrigger;

 private:
  void startEventTapIfNeeded();
  void startNSEventFallbackIfNeeded();
  void handle(const platform::KeyboardEvent& event);
  void handleFunctionTransition(bool isDown, platform::Uptime at);
  void interruptHold(const platform::KeyboardEvent& press);
  void triggerToggle(platform::Uptime at);

  platform::KeyboardEvents& keyboardEvents_;
  // In this order, so that the destructor ends the monitors first, then the source, then the tap.
  std::unique_ptr<platform::EventTap> eventTap_;
  std::unique_ptr<platform::RunLoopSource> runLoopSource_;
  std::unique_ptr<platform::EventMonitor> flagsMonitor_;
  std::unique_ptr<platform::EventMonitor> keyDownMonitor_;
  std::unique_ptr<platform::EventMonitor> keyUpMonitor_;
  /// The last accepted Fn state.
  bool isFunctionDown_ = false;
  /// Whether this hold has been cancelled. It lasts until its release all the same.
  bool isHoldCancelled_ = false;
  /// Absent until the first one, which is always accepted.
  std::optional<platform::Uptime> lastTriggerAt_;
  std::optional<platform::Uptime> lastFunctionTransitionAt_;
};

}  // namespace tavelo
