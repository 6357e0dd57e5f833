#include "tests/platform/linux/FakeToolkit.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QProcess>
#include <QStringList>
#include <csignal>
#include <utility>

#include <sys/prctl.h>

namespace tavelo::linuxdesktop {

QDBusArgument& operator<<(QDBusArgument& argument, const ElementReference& element) {
  argument.beginStructure();
  argument << element.service << QDBusObjectPath(element.path);
  argument.endStructure();
  return argument;
}
const QDBusArgument& operator>>(const QDBusArgument& argument, ElementReference&) { return argument; }

QVariant references(const QList<ElementReference>& elements) { return QVariant::fromValue(elements); }

QVariant propertyValue(const QVariant& value) { return QVariant::fromValue(QDBusVariant(value)); }

FakeToolkit* FakeToolkit::instance() {
  static FakeToolkit* toolkit = []() -> FakeToolkit* {
    static int count = 1;
    static char name[] = "tavelo-test";
    static char* arguments[] = {name, nullptr};
    new QCoreApplication(count, arguments);
    auto* daemon = new QProcess(QCoreApplication::instance());
    daemon->setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    daemon->start("dbus-daemon", {"--session", "--nofork", "--print-address", "--address=unix:tmpdir=/tmp"});
    if (!daemon->waitForReadyRead(10000)) return nullptr;
    const QString address = QString::fromUtf8(daemon->readLine()).trimmed();
    qputenv("DBUS_SESSION_BUS_ADDRESS", address.toUtf8());
    qDBusRegisterMetaType<QList<quint32>>();
    qDBusRegisterMetaType<ElementReference>();
    qDBusRegisterMetaType<QList<ElementReference>>();
    return new FakeToolkit(address);
  }();
  return toolkit;
}

FakeToolkit::FakeToolkit(const QString& address)
    : address_(address), connection_(QDBusConnection::connectToBus(address, "toolkit")) {
  connection_.registerVirtualObject("/", this, QDBusConnection::SubPath);
  moveToThread(&thread_);
  thread_.start();
  connection_.registerService("org.a11y.Bus");
}

ElementReference FakeToolkit::field() const { return {connection_.baseService(), "/field"}; }

void FakeToolkit::reset(std::u32string content, int selectionStart, int selectionEnd) {
  {
    const std::lock_guard lock{mutex_};
    answers_.clear();
    calls_.clear();
    text = std::move(content);
    start = selectionStart;
    end = selectionEnd;
  }
  answer("GetAddress", [this](const auto&) { return QVariantList{address_}; });
  answerAlways("GetInterfaces", {QStringList{"org.a11y.atspi.Text", "org.a11y.atspi.EditableText"}});
  answerAlways("GetState", {QVariant::fromValue(QList<quint32>{1U << 7U | 1U << 12U | 1U << 25U, 0})});
  answerAlways("GetRole", {61U});
  answerAlways("ToolkitName", {propertyValue("gtk")});
  answerAlways("ChildCount", {propertyValue(0)});
  answer("CharacterCount",
         [this](const auto&) { return QVariantList{propertyValue(static_cast<int>(text.size()))}; });
  answer("CaretOffset", [this](const auto&) { return QVariantList{propertyValue(end)}; });
  answer("GetNSelections", [this](const auto&) { return QVariantList{QVariant(start < end ? 1 : 0)}; });
  answer("GetSelection", [this](const auto&) { return QVariantList{start, end}; });
  answer("GetText", [this](const QVariantList& span) {
    const auto from = static_cast<std::size_t>(span[0].toInt());
    const auto to = span[1].toInt() < 0 ? text.size() : static_cast<std::size_t>(span[1].toInt());
    return QVariantList{QString::fromStdU32String(text.substr(from, to - from))};
  });
  answer("SetCaretOffset", [this](const QVariantList& offset) {
    start = end = offset[0].toInt();
    return QVariantList{true};
  });
  answer("DeleteText", [this](const QVariantList& span) {
    text.erase(static_cast<std::size_t>(span[0].toInt()),
               static_cast<std::size_t>(span[1].toInt() - span[0].toInt()));
    start = end = span[0].toInt();
    return QVariantList{true};
  });
  answer("InsertText", [this](const QVariantList& insertion) {
    const auto bytes = insertion[1].toString().toUtf8().left(insertion[2].toInt());
    text.insert(static_cast<std::size_t>(insertion[0].toInt()), QString::fromUtf8(bytes).toStdU32String());
    return QVariantList{true};
  });
}

void FakeToolkit::answer(const QString& member, Answer answer) {
  const std::lock_guard lock{mutex_};
  answers_[member] = std::move(answer);
}

void FakeToolkit::answerAlways(const QString& member, const QVariantList& values) {
  answer(member, [values](const auto&) { return values; });
}

void FakeToolkit::answerEverything(const QVariantList& values) {
  const std::lock_guard lock{mutex_};
  for (auto& [member, answer] : answers_)
    if (member != "GetAddress") answer = [values](const auto&) { return values; };
}

int FakeToolkit::calls(const QString& member) {
  const std::lock_guard lock{mutex_};
  return calls_[member];
}

bool FakeToolkit::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  const std::lock_guard lock{mutex_};
  const QString member =
      message.member() == "Get" ? message.arguments().value(1).toString() : message.member();
  ++calls_[member];
  path = message.path();
  const auto found = answers_.find(member);
  if (found == answers_.end()) return false;
  if (const auto values = found->second(message.arguments())) connection.send(message.createReply(*values));
  return true;
}

}  // namespace tavelo::linuxdesktop
