#include "platform/linux/notifications/NotificationWithButton.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <QVariantMap>
#include <utility>

namespace tavelo::linuxdesktop {
namespace {

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* path = "/org/freedesktop/Notifications";
constexpr const char* buttonName = "button";
constexpr int untilAnswered = 0;

QDBusMessage call(const char* method) {
  return QDBusMessage::createMethodCall(service, path, service, method);
}

}  // namespace

NotificationWithButton::NotificationWithButton(const std::string& title, const std::string& body,
                                               const std::string& button, std::function<void()> pressed)
    : pressed_(std::move(pressed)) {
  auto bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  // From any sender: for a named one, Qt would wait until the bus has said who that is.
  bus.connect(QString(), path, service, "ActionInvoked", this, SLOT(actionInvoked(unsigned, QString)));
  const QString application = QGuiApplication::desktopFileName();
  auto message = call("Notify");
  message << QCoreApplication::applicationName() << 0U << application
          << QString::fromStdString(title)
          // The body is markup; the title is not.
          << QString::fromStdString(body).toHtmlEscaped()
          << QStringList{buttonName, QString::fromStdString(button)}
          << QVariantMap{{"desktop-entry", application}} << untilAnswered;
  auto* answer = new QDBusPendingCallWatcher(bus.asyncCall(message), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
    const QDBusPendingReply<unsigned> shown = *answer;
    if (shown.isValid()) number_ = shown.value();
    answer->deleteLater();
  });
}

NotificationWithButton::~NotificationWithButton() {
  if (number_) QDBusConnection::sessionBus().send(call("CloseNotification") << *number_);
}

void NotificationWithButton::actionInvoked(unsigned notification, const QString& action) {
  if (notification == number_ && action == buttonName && pressed_) pressed_();
}

}  // namespace tavelo::linuxdesktop
