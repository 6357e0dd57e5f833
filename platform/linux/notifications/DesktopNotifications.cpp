#include "platform/linux/notifications/DesktopNotifications.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <QVariantMap>

namespace tavelo::linuxdesktop {
namespace {

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* path = "/org/freedesktop/Notifications";

/// The service chooses how long to show it.
constexpr int usualTime = -1;

QDBusMessage notification(const std::string& title, const std::string& body) {
  const QString application = QGuiApplication::desktopFileName();
  auto message = QDBusMessage::createMethodCall(service, path, service, "Notify");
  message << QCoreApplication::applicationName() << 0U << application
          << QString::fromStdString(title)
          // The body is markup; the title is not.
          << QString::fromStdString(body).toHtmlEscaped() << QStringList{}
          << QVariantMap{{"desktop-entry", application}} << usualTime;
  return message;
}

/// Withdraws the notification that the call brought up, as soon as its number is known.
void withdraw(const QDBusPendingCall& call) {
  auto* watcher = new QDBusPendingCallWatcher(call);
  const auto close = [watcher] {
    const QDBusPendingReply<unsigned> shown = *watcher;
    auto message = QDBusMessage::createMethodCall(service, path, service, "CloseNotification");
    if (shown.isValid()) QDBusConnection::sessionBus().send(message << shown.value());
    watcher->deleteLater();
  };
  if (watcher->isFinished()) return close();
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, close);
}

}  // namespace

void DesktopNotifications::post(const std::string& title, const std::string& body) {
  // The first connection waits for the bus, and only for the bus.
  const QDBusConnection bus = QDBusConnection::sessionBus();
  // Waits neither for the answer nor for the service to start.
  if (bus.isConnected()) bus.send(notification(title, body));
}

std::shared_ptr<void> DesktopNotifications::show(const std::string& title, const std::string& body) {
  const QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return nullptr;
  auto* call = new QDBusPendingCall(bus.asyncCall(notification(title, body)));
  return {call, [](QDBusPendingCall* shown) {
            withdraw(*shown);
            delete shown;
          }};
}

}  // namespace tavelo::linuxdesktop
