#include "platform/linux/session/SessionLock.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QString>
#include <chrono>
#include <memory>
#include <utility>

#include "platform/Environment.h"
#include "platform/linux/accessibility/BusHandshake.h"

namespace tavelo::linuxdesktop {
namespace {

/// Milliseconds. All of these answer within a few.
constexpr int answerLimit = 100;

constexpr const char* logind = "org.freedesktop.login1";
constexpr const char* savers[] = {"org.freedesktop.ScreenSaver", "org.gnome.ScreenSaver",
                                  "org.cinnamon.ScreenSaver", "org.xfce.ScreenSaver"};

/// Whether the system has a bus that will not keep us waiting.
bool systemBusAnswers() {
  const auto address = platform::environmentVariable("DBUS_SYSTEM_BUS_ADDRESS");
  return completesHandshake(
      QString::fromStdString(address.empty() ? "unix:path=/run/dbus/system_bus_socket" : address),
      std::chrono::milliseconds(50));
}

/// "auto" is the caller's session, or the user's session with a display.
QDBusMessage lockedHintRequest() {
  auto request = QDBusMessage::createMethodCall(logind, "/org/freedesktop/login1/session/auto",
                                                "org.freedesktop.DBus.Properties", "Get");
  return request << "org.freedesktop.login1.Session"
                 << "LockedHint";
}

QDBusMessage activeRequest(const QString& saver) {
  return QDBusMessage::createMethodCall(saver, '/' + QString(saver).replace('.', '/'), saver, "GetActive");
}

bool saysYes(const QDBusMessage& reply) {
  const auto value = reply.arguments().value(0);
  return (value.canConvert<QDBusVariant>() ? value.value<QDBusVariant>().variant() : value).toBool();
}

/// One question to all.
struct Question {
  std::function<void(bool)> answer;
  int unanswered = 0;

  void settle(bool isLocked) {
    if (const auto call = std::exchange(answer, nullptr)) call(isLocked);
  }
};

}  // namespace

SessionLock::SessionLock() : session_(QDBusConnection::sessionBus()) {
  if (systemBusAnswers()) system_ = QDBusConnection::systemBus();
}

void SessionLock::ask(std::function<void(bool isLocked)> answer) {
  const auto question = std::make_shared<Question>(Question{.answer = std::move(answer)});
  const auto send = [&](const QDBusConnection& bus, QDBusMessage request) {
    ++question->unanswered;
    // Nobody starts a screen saver for our question.
    request.setAutoStartService(false);
    auto* reply = new QDBusPendingCallWatcher(bus.asyncCall(request, answerLimit), &context_);
    QObject::connect(reply, &QDBusPendingCallWatcher::finished, &context_, [question, reply] {
      const auto message = reply->reply();
      reply->deleteLater();
      if (message.type() == QDBusMessage::ReplyMessage && saysYes(message)) question->settle(true);
      if (--question->unanswered == 0) question->settle(false);
    });
  };
  if (system_) send(*system_, lockedHintRequest());
  for (const char* each : savers) send(session_, activeRequest(each));
}

}  // namespace tavelo::linuxdesktop
