#include "platform/linux/notifications/DesktopNotifications.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QGuiApplication>
#include <QVariantMap>

namespace tavelo::linuxdesktop {
namespace {

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* path = "/org/freedesktop/Notifications";

/// The service chooses how long to show it.
constexpr int usualTime = -1;

}  // namespace

void DesktopNotifications::post(const std::string& title, const std::string& body) {
  // The first connection waits for the bus, and only for the bus.
  const QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  const QString application = QGuiApplication::desktopFileName();
  auto message = QDBusMessage::createMethodCall(service, path, service, "Notify");
  message << QCoreApplication::applicationName() << 0U << application
          << QString::fromStdString(title)
          // The body is markup; the title is not.
          << QString::fromStdString(body).toHtmlEscaped() << QStringList{}
          << QVariantMap{{"desktop-entry", application}} << usualTime;
  // Waits neither for the answer nor for the service to start.
  bus.send(message);
}

}  // namespace tavelo::linuxdesktop
