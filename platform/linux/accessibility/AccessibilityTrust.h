#pragma once

#include <functional>

#include "platform/UserNotifications.h"
#include "platform/linux/accessibility/AccessibilityBus.h"

namespace tavelo::linuxdesktop {

/// Whether this program may use accessibility on this desktop, and what to tell the user when it may not.
/// Main thread.
class AccessibilityTrust final {
 public:
  /// What trust is made of, one by one.
  struct Facts {
    bool isWaylandSession = false;
    /// The accessibility bus is there and answers.
    bool busAnswers = false;
    /// Applications are told to be accessible.
    bool isEnabled = false;
    bool hasRawKeyEvents = false;

    bool isTrusted() const { return !isWaylandSession && busAnswers && isEnabled && hasRawKeyEvents; }
  };

  AccessibilityTrust(AccessibilityBus& bus, platform::UserNotifications& notifications,
                     std::function<bool()> hasRawKeyEvents);

  /// Asked of the desktop afresh; bounded in time as every call.
  Facts facts();

  /// Switches accessibility on if it is off, and tells the user in a notification what is left to do.
  void prompt(const Facts& facts);

  /// Tells the user in a notification when the program cannot work in this kind of session.
  void announceUnsuitableSession();

 private:
  AccessibilityBus& bus_;
  platform::UserNotifications& notifications_;
  std::function<bool()> hasRawKeyEvents_;
};

}  // namespace tavelo::linuxdesktop
