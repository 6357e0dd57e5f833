#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <vector>

#include "platform/linux/accessibility/ApplicationHealth.h"
#include "platform/linux/accessibility/TurnBudget.h"

namespace tavelo::linuxdesktop {

/// Calls over D-Bus that never wait longer than the turn allows, and not at all for an application that has
/// just kept one waiting. No event loop runs inside a call. Main thread.
class BoundedCalls final {
 public:
  BoundedCalls(platform::MainQueue& mainQueue, const platform::Clock& clock) : budget_(mainQueue, clock) {}

  /// Sends all requests at once and waits for all answers; an application performs its own in this order.
  /// One reply or error for each request, in their order.
  std::vector<QDBusMessage> call(const QDBusConnection& connection,
                                 const std::vector<QDBusMessage>& requests);

  /// Whether somebody answers at a bus's address, so that connecting to it would not hang.
  bool reaches(const QString& busAddress);

  const TurnBudget& budget() const { return budget_; }

  bool isSuspended(const QString& service) { return health_.isSuspended(service); }

 private:
  TurnBudget budget_;
  ApplicationHealth health_;
};

}  // namespace tavelo::linuxdesktop
