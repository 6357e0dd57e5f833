#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QString>
#include <map>
#include <vector>

#include "platform/TurnBudget.h"

namespace tavelo::linuxdesktop {

using platform::TurnBudget;

/// D-Bus calls that never wait longer than the turn allows. An application that let a call time out is
/// suspended: calls to it fail at once until it has answered again. No event loop runs during a call. Main
/// thread.
class BoundedCalls final {
 public:
  BoundedCalls(platform::MainQueue& mainQueue, const platform::Clock& clock) : budget_(mainQueue, clock) {}

  /// Sends all requests at once and waits for all replies. Returns one reply or error for each request, in
  /// order. Each application handles its requests in this order. `limit` shortens the wait.
  std::vector<QDBusMessage> call(const QDBusConnection& connection, const std::vector<QDBusMessage>& requests,
                                 platform::Uptime limit = TurnBudget::callLimit);

  /// As `completesHandshake`, within the time that the turn allows.
  bool reaches(const QString& busAddress, platform::Uptime limit = TurnBudget::callLimit);

  TurnBudget& budget() { return budget_; }

  bool isSuspended(const QString& service);

 private:
  void suspend(const QDBusConnection& connection, const QString& service);

  TurnBudget budget_;
  /// For each suspended application, the request whose answer ends the suspension.
  std::map<QString, QDBusPendingCall> unanswered_;
};

}  // namespace tavelo::linuxdesktop
