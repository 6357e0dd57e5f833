#include "platform/linux/notifications/DesktopNotifications.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QGuiApplication>
#include <QVariantMap>

namespace tavelo::linuxdesktop {
namespace {

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* path = "/org/freedesktop/Notifications";

/// The service chooses how long it shows.
constexpr int usualTime = -1;

}  // namespace

void DesktopNotifications::post(const std::string& title, const std::string& body) {
  // Connecting waits for the bus alone, once; without a bus the message goes nowhere.
  const QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  const QString application = QGuiApplication::desktopFileName();
  auto message = QDBusMessage::createMethodCall(service, path, service, "Notify");
  message << QCoreApplication::applicationName() << 0U << application
          << QString::fromStdString(title)
          // Only the body may hold markup.
          << QString::fromStdString(body).toHtmlEscaped() << QStringList{}
          << QVariantMap{{"desktop-entry", application}} << usualTime;
  // Nobody waits for the answer, nor for a service that has to be started first.
  bus.send(message);
}

}  // namespace tavelo::linuxdesktop
