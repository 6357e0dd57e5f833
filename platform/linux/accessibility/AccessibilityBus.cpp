#include "platform/linux/accessibility/AccessibilityBus.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusVariant>
#include <QDeadlineTimer>
#include <chrono>

#include "platform/linux/accessibility/AtspiMessages.h"

namespace tavelo::linuxdesktop {
namespace {

const ElementReference launcher{QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus")};
const ElementReference registry{QStringLiteral("org.a11y.atspi.Registry"),
                                QStringLiteral("/org/a11y/atspi/registry")};

/// How long the start of the program may wait for the bus. One that works needs a tenth of this.
constexpr std::chrono::milliseconds startLimit{150};

/// How long a bus that did not answer is left alone. Otherwise every question would wait for it.
constexpr std::chrono::seconds retryInterval{5};
/// A bus that never answers shall not wake the program for ever.
constexpr int mostRetries = 3;

QDBusMessage addressRequest() { return atspi::request(launcher, "org.a11y.Bus", "GetAddress"); }

QString freshName() {
  static int number = 0;
  return QStringLiteral("tavelo-accessibility-%1").arg(++number);
}

}  // namespace

AccessibilityBus::AccessibilityBus(platform::MainQueue& mainQueue, const platform::Clock& clock)
    : mainQueue_(mainQueue), calls_(mainQueue, clock), session_(QDBusConnection::sessionBus()) {
  // Starts the accessibility bus, if it does not run yet, while the program itself starts.
  session_.asyncCall(addressRequest());
}

AccessibilityBus::~AccessibilityBus() { disconnect(); }

std::vector<QDBusMessage> AccessibilityBus::call(const std::vector<QDBusMessage>& requests) {
  if (connect()) return calls_.call(*connection_, requests);
  std::vector<QDBusMessage> replies;
  replies.reserve(requests.size());
  for (const auto& request : requests)
    replies.push_back(request.createErrorReply(QDBusError::Disconnected, QStringLiteral("no bus")));
  return replies;
}

QDBusMessage AccessibilityBus::call(const QDBusMessage& request) {
  return call(std::vector{request}).front();
}

bool AccessibilityBus::wouldKeepWaiting(const std::optional<std::string>& other) {
  const auto* daemon = session_.interface();
  if (daemon == nullptr) return false;
  const QDeadlineTimer deadline(startLimit);
  const auto left = [&] { return std::chrono::milliseconds(deadline.remainingTime()); };
  if (other && !calls_.reaches(QString::fromStdString(*other), left())) return true;
  const bool isRunning = daemon->isServiceRegistered(launcher.service);
  const auto address = atspi::readString(callLauncher(addressRequest(), left()));
  if (!address) return isRunning && address.error() == platform::AXError::cannotComplete;
  return !address->isEmpty() && !reaches(*address, left());
}

bool AccessibilityBus::isAnswering() {
  const ElementReference bus{QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus")};
  return bool(atspi::readString(call(atspi::request(bus, "org.freedesktop.DBus", "GetId"))));
}

bool AccessibilityBus::isEnabled() {
  return atspi::readBoolProperty(
             callLauncher(atspi::propertyRequest(launcher, "org.a11y.Status", "IsEnabled")))
      .valueOr(false);
}

void AccessibilityBus::enable() {
  session_.asyncCall(atspi::request(launcher, "org.freedesktop.DBus.Properties", "Set",
                                    {QStringLiteral("org.a11y.Status"), QStringLiteral("IsEnabled"),
                                     QVariant::fromValue(QDBusVariant(true))}));
}

bool AccessibilityBus::connect() {
  if (connection_ && connection_->isConnected()) return true;
  disconnect();
  const auto address = atspi::readString(callLauncher(addressRequest()));
  if (!address || address->isEmpty() || !reaches(*address)) {
    askAgainLater();
    return false;
  }
  auto connection = QDBusConnection::connectToBus(*address, freshName());
  connection_ = connection;
  if (!connection.isConnected()) return false;
  ++connectionNumber_;
  retries_ = 0;
  // Some toolkits stay silent until somebody has registered for an event. Any event will do. This one is
  // rare, and the bus does not deliver it to us because we add no match rule.
  connection.asyncCall(atspi::request(registry, "org.a11y.atspi.Registry", "RegisterEvent",
                                      {QStringLiteral("window:activate"), QStringList(), QString()}));
  return true;
}

bool AccessibilityBus::reaches(const QString& address, platform::Uptime limit) {
  if (!silence_.hasExpired()) return false;
  const bool answers = calls_.reaches(address, limit);
  if (!answers) silence_.setRemainingTime(retryInterval);
  return answers;
}

void AccessibilityBus::askAgainLater() {
  if (retryWaits_ || retries_ == mostRetries) return;
  retryWaits_ = true;
  ++retries_;
  mainQueue_.asyncAfter(retryInterval, lifetime_.guard([this] {
    retryWaits_ = false;
    silence_.setRemainingTime(0);
    connect();
  }));
}

void AccessibilityBus::disconnect() {
  if (!connection_) return;
  const QString name = connection_->name();
  connection_.reset();
  QDBusConnection::disconnectFromBus(name);
}

QDBusMessage AccessibilityBus::callLauncher(const QDBusMessage& request, platform::Uptime limit) {
  return calls_.call(session_, {request}, limit).front();
}

}  // namespace tavelo::linuxdesktop
