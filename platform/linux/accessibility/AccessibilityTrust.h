#pragma once

#include <functional>

#include "platform/UserNotifications.h"
#include "platform/linux/accessibility/AccessibilityBus.h"

namespace tavelo::linuxdesktop {

/// Whether this program may use accessibility on this desktop, and what to tell the user if it may not.
/// Main thread.
class AccessibilityTrust final {
 public:
  /// The program is trusted if all of these are right.
  struct Facts {
    bool isWaylandSession = false;
    /// The accessibility bus exists and answers.
    bool busAnswers = false;
    /// The desktop tells applications to be accessible.
    bool isEnabled = false;
    bool hasRawKeyEvents = false;

    bool isTrusted() const { return !isWaylandSession && busAnswers && isEnabled && hasRawKeyEvents; }
  };

  AccessibilityTrust(AccessibilityBus& bus, platform::UserNotifications& notifications,
                     std::function<bool()> hasRawKeyEvents);

  /// Asks the desktop each time; bounded in time like every call.
  Facts facts();

  /// Switches accessibility on if it is off, and posts a notification that says what the user still has to
  /// do.
  void prompt(const Facts& facts);

  /// Posts a notification if the program cannot work in this kind of session.
  void announceUnsuitableSession();

 private:
  AccessibilityBus& bus_;
  platform::UserNotifications& notifications_;
  std::function<bool()> hasRawKeyEvents_;
};

}  // namespace tavelo::linuxdesktop
