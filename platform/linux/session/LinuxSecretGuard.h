#pragma once

#include <functional>
#include <utility>

#include "platform/SecretGuard.h"
#include "platform/linux/accessibility/AtspiAccessibility.h"
#include "platform/linux/session/SessionLock.h"

namespace tavelo::linuxdesktop {

/// The secrets of a Linux desktop: a password field that accessibility can see, and a locked session.
class LinuxSecretGuard final : public platform::SecretGuard {
 public:
  /// `accessibility` must outlive this object.
  explicit LinuxSecretGuard(AtspiAccessibility& accessibility) : accessibility_(accessibility) {}

  /// Whether the hold key is being set up, so that a press of it begins no dictation.
  std::function<bool()> keepsHoldKey;

  /// Looks for the field at once, bounded like every call of accessibility.
  void ask(Answer answer) override {
    if (keepsHoldKey && keepsHoldKey()) return answer(platform::Secret::setUp);
    if (accessibility_.passwordHasFocus()) return answer(platform::Secret::passwordField);
    lock_.ask([answer = std::move(answer)](bool isLocked) {
      answer(isLocked ? platform::Secret::lockedSession : platform::Secret::none);
    });
  }

 private:
  AtspiAccessibility& accessibility_;
  SessionLock lock_;
};

}  // namespace tavelo::linuxdesktop
