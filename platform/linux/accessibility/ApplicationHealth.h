#pragma once

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QString>
#include <map>

namespace tavelo::linuxdesktop {

/// Remembers which applications let a call run into its time-out, until they have answered again. Main
/// thread.
class ApplicationHealth final {
 public:
  /// Holds back calls to `service`; sends it one request, without waiting, whose answer lets them pass again.
  void suspend(const QDBusConnection& connection, const QString& service);

  /// Whether calls to `service` would most likely wait for nothing.
  bool isSuspended(const QString& service);

 private:
  std::map<QString, QDBusPendingCall> unanswered_;
};

}  // namespace tavelo::linuxdesktop
