#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QString>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/Clock.h"
#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/linux/accessibility/BoundedCalls.h"

namespace tavelo::linuxdesktop {

/// The desktop's accessibility bus and its switch. Connects on first use, and again after the bus went away;
/// without a bus every call fails at once. Asks a bus that did not answer a few times more, because a busy
/// desktop is slow to start it, and some toolkits stay silent until somebody listens. Subscribes to no
/// events, so nothing else wakes the program. Main thread.
class AccessibilityBus final {
 public:
  AccessibilityBus(platform::MainQueue& mainQueue, const platform::Clock& clock);
  ~AccessibilityBus();
  AccessibilityBus(const AccessibilityBus&) = delete;
  AccessibilityBus& operator=(const AccessibilityBus&) = delete;

  /// As `BoundedCalls::call`.
  std::vector<QDBusMessage> call(const std::vector<QDBusMessage>& requests);
  QDBusMessage call(const QDBusMessage& request);

  /// Changes with each connection. A bus name learnt under another number is no longer valid.
  int connectionNumber() const { return connectionNumber_; }

  /// Whether the desktop has a bus that would keep a client waiting: a service that does not tell the
  /// address, or an address at which nobody answers. `other` is an address that the display server names.
  /// Waits 150 ms at most. A service that the desktop has yet to start counts as answering if it takes
  /// longer.
  bool wouldKeepWaiting(const std::optional<std::string>& other);

  /// Whether there is a bus that answers now.
  bool isAnswering();

  /// Whether the desktop's applications are told to be accessible.
  bool isEnabled();

  /// Tells them to be; returns at once.
  void enable();

  /// Whether calls to `service` fail at once, because it still owes an answer.
  bool isSuspended(const QString& service) { return calls_.isSuspended(service); }
  TurnBudget& budget() { return calls_.budget(); }

 private:
  bool connect();
  void disconnect();
  bool reaches(const QString& address, platform::Uptime limit = TurnBudget::callLimit);
  void askAgainLater();
  QDBusMessage callLauncher(const QDBusMessage& request, platform::Uptime limit = TurnBudget::callLimit);

  platform::MainQueue& mainQueue_;
  BoundedCalls calls_;
  QDBusConnection session_;
  std::optional<QDBusConnection> connection_;
  int connectionNumber_ = 0;
  /// Runs while a bus that did not answer is left alone.
  QDeadlineTimer silence_{0};
  int retries_ = 0;
  bool retryWaits_ = false;
  platform::Lifetime lifetime_;
};

}  // namespace tavelo::linuxdesktop
