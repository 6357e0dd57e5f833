// Stands in for a service of the session bus. Usage: service_stage NAME [MEMBER=VALUE…]
// Owns the name. Answers calls of the listed methods, and questions for the listed properties, with the
// value: true and false are booleans, anything else is a text. Never answers anything else. On standard
// input, "INTERFACE.MEMBER VALUE" makes it answer so from now on and send the signal that a screen saver
// would.

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QMap>
#include <cstdio>

#include "platform/posix/SystemClock.h"
#include "platform/qt/QtMainQueue.h"
#include "tests/desktop/CommandReader.h"

namespace tavelo {
namespace {

QVariant valueOf(const QString& text) {
  if (text == "true" || text == "false") return text == "true";
  return text;
}

class ServiceStage final : public QDBusVirtualObject {
 public:
  explicit ServiceStage(const QStringList& arguments) {
    for (const QString& each : arguments.mid(2))
      answers_[each.section('=', 0, 0)] = valueOf(each.section('=', 1));
    auto bus = QDBusConnection::sessionBus();
    const bool owns = bus.registerVirtualObject("/", this, QDBusConnection::SubPath) &&
                      bus.registerService(arguments.value(1));
    std::printf("%s\n", owns ? "owned" : "refused");
    std::fflush(stdout);
  }

  QString introspect(const QString&) const override { return {}; }

  bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override {
    const bool asksProperty = call.member() == "Get";
    const auto answer = answers_.find(asksProperty ? call.arguments().value(1).toString() : call.member());
    if (answer == answers_.end()) return true;
    bus.send(call.createReply(asksProperty ? QVariant::fromValue(QDBusVariant(*answer)) : *answer));
    return true;
  }

 private:
  /// `name` is an interface and a member; a screen saver's GetActive and ActiveChanged have the same value.
  void change(const QString& name, const QVariant& value) {
    const QString interface = name.section('.', 0, -2);
    answers_["GetActive"] = value;
    auto signal = QDBusMessage::createSignal("/" + QString(interface).replace('.', '/'), interface,
                                             name.section('.', -1));
    QDBusConnection::sessionBus().send(signal << value);
  }

  QMap<QString, QVariant> answers_;
  const posix::SystemClock clock_;
  qt::QtMainQueue queue_{clock_};
  const CommandReader reader_{queue_, [this](const auto& name, const auto& value) {
                                change(QString::fromStdString(name), valueOf(QString::fromStdString(value)));
                              }};
};

}  // namespace
}  // namespace tavelo

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const tavelo::ServiceStage stage(QCoreApplication::arguments());
  return QCoreApplication::exec();
}
