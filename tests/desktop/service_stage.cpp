// Stands in for a service of the session bus. Usage: service_stage NAME [MEMBER=VALUE…]
// Owns the name. Answers calls of the listed methods, and questions for the listed properties, with the
// value: true and false are booleans, anything else is a text. Never answers anything else. "answer
// MEMBER=VALUE" on standard input adds an answer or changes it.

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QMap>

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
    for (const QString& each : arguments.mid(2)) learn(each);
    auto bus = QDBusConnection::sessionBus();
    const bool owns = bus.registerVirtualObject("/", this, QDBusConnection::SubPath) &&
                      bus.registerService(arguments.value(1));
    tell(owns ? "owned" : "refused");
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
  void learn(const QString& answer) { answers_[answer.section('=', 0, 0)] = valueOf(answer.section('=', 1)); }

  QMap<QString, QVariant> answers_;
  const posix::SystemClock clock_;
  qt::QtMainQueue queue_{clock_};
  const CommandReader reader_{queue_, [this](const auto& name, const auto& answer) {
                                learn(QString::fromStdString(answer));
                                tell("done", name);
                              }};
};

}  // namespace
}  // namespace tavelo

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const tavelo::ServiceStage stage(QCoreApplication::arguments());
  return QCoreApplication::exec();
}
