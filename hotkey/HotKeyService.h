#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "hotkey/HotKeyAction.h"
#include "platform/KeyboardEvents.h"
#include "platform/Time.h"

namespace tavelo {

/// Turns the held Fn key and Control-Option-V into actions, in whatever application they are pressed.
///
/// An event tap and three global monitors watch side by side: the tap sees keys bound for this program too,
/// the monitors go on when the tap was refused or switched off. Most keys therefore arrive twice, and the
/// state below absorbs the second copy. Listens only: every key still reaches the focused application. Main
/// thread only; the watchers end with the service.
class HotKeyService final {
 public:
  /// Watches the current platform's keyboard.
  HotKeyService();

  /// Watches this one, which must outlive the service.
  explicit HotKeyService(platform::KeyboardEvents& keyboardEvents);

  HotKeyService(const HotKeyService&) = delete;
  HotKeyService& operator=(const HotKeyService&) = delete;

  /// Installs whichever watcher is not installed yet; says nothing when the system refuses one. Safe to call
  /// again.
  void start();

  /// Called from inside keyboard-event delivery for every accepted Fn press, Fn release and toggle; must be
  /// quick.
  std::function<void(HotKeyAction)> onAction;

  /// Called after `onAction(toggle)`.
  std::function<void()> onTrigger;

 private:
  void startEventTapIfNeeded();
  void startNSEventFallbackIfNeeded();
  void handle(const platform::KeyboardEvent& event);
  void handleFunctionTransition(bool isDown, platform::Uptime at);
  void triggerToggle(platform::Uptime at);

  platform::KeyboardEvents& keyboardEvents_;
  // In this order, so that the monitors go first at the end, then the source, then the tap.
  std::unique_ptr<platform::EventTap> eventTap_;
  std::unique_ptr<platform::RunLoopSource> runLoopSource_;
  std::unique_ptr<platform::EventMonitor> flagsMonitor_;
  std::unique_ptr<platform::EventMonitor> keyDownMonitor_;
  std::unique_ptr<platform::EventMonitor> keyUpMonitor_;
  /// The last accepted Fn state.
  bool isFunctionDown_ = false;
  /// Absent until the first one, which no threshold holds back.
  std::optional<platform::Uptime> lastTriggerAt_;
  std::optional<platform::Uptime> lastFunctionTransitionAt_;
};

}  // namespace tavelo
