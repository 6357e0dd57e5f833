#include "ui/qt/StatusArea.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <utility>

namespace tavelo {
namespace {

constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";

}  // namespace

void askStatusArea(QObject& context, int patience, std::function<void(bool answers)> then) {
  const auto bus = QDBusConnection::sessionBus();
  // Only the bus itself answers this question.
  if (!bus.isConnected() || !bus.interface()->isServiceRegistered(watcherName)) return then(true);
  auto question = QDBusMessage::createMethodCall(watcherName, "/StatusNotifierWatcher",
                                                 "org.freedesktop.DBus.Properties", "Get");
  question << QString(watcherName) << QStringLiteral("IsStatusNotifierHostRegistered");
  auto* answer = new QDBusPendingCallWatcher(bus.asyncCall(question, patience), &context);
  QObject::connect(answer, &QDBusPendingCallWatcher::finished, &context,
                   [answer, isLimited = patience != noPatienceLimit, then = std::move(then)] {
                     answer->deleteLater();
                     // Without a limit, a missing reply means that the watcher has ended.
                     then(!isLimited || answer->error().type() != QDBusError::NoReply);
                   });
}

}  // namespace tavelo
