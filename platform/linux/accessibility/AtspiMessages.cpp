#include "platform/linux/accessibility/AtspiMessages.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace tavelo::linuxdesktop::atspi {
namespace {

using platform::AXError;

bool is(const QDBusMessage& reply, const char* signature) {
  return reply.type() == QDBusMessage::ReplyMessage && reply.signature() == QLatin1String(signature) &&
         !reply.arguments().isEmpty();
}

template <class Value>
std::optional<Value> read(const QDBusMessage& reply, const char* signature) {
  if (!is(reply, signature)) return std::nullopt;
  return reply.arguments().constFirst().value<Value>();
}

template <class Value>
std::optional<Value> readProperty(const QDBusMessage& reply) {
  const auto wrapped = read<QDBusVariant>(reply, "v");
  if (!wrapped || wrapped->variant().metaType() != QMetaType::fromType<Value>()) return std::nullopt;
  return wrapped->variant().value<Value>();
}

}  // namespace

QDBusMessage request(const ElementReference& element, const char* interface, const char* method,
                     const QVariantList& arguments) {
  auto message = QDBusMessage::createMethodCall(element.service, element.path, QLatin1String(interface),
                                                QLatin1String(method));
  message.setArguments(arguments);
  return message;
}

QDBusMessage propertyRequest(const ElementReference& element, const char* interface, const char* property) {
  return request(element, "org.freedesktop.DBus.Properties", "Get",
                 {QString::fromLatin1(interface), QString::fromLatin1(property)});
}

AXError outcome(const QDBusMessage& reply) {
  if (reply.type() == QDBusMessage::ReplyMessage) return AXError::success;
  switch (QDBusError(reply).type()) {
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
    // Our own limit, before anything was sent.
    case QDBusError::LimitsExceeded:
      return AXError::cannotComplete;
    case QDBusError::UnknownMethod:
    case QDBusError::UnknownInterface:
    case QDBusError::UnknownProperty:
    case QDBusError::NotSupported:
      return AXError::attributeUnsupported;
    case QDBusError::Disconnected:
    case QDBusError::NoServer:
      return AXError::apiDisabled;
    case QDBusError::ServiceUnknown:
    case QDBusError::UnknownObject:
      return AXError::invalidUIElement;
    default:
      return AXError::failure;
  }
}

bool isTimeOut(const QDBusMessage& reply) {
  return outcome(reply) == AXError::cannotComplete && QDBusError(reply).type() != QDBusError::LimitsExceeded;
}

std::optional<bool> readBool(const QDBusMessage& reply) { return read<bool>(reply, "b"); }
std::optional<QString> readString(const QDBusMessage& reply) { return read<QString>(reply, "s"); }
std::optional<QStringList> readStrings(const QDBusMessage& reply) { return read<QStringList>(reply, "as"); }
std::optional<int> readInteger(const QDBusMessage& reply) { return read<int>(reply, "i"); }
std::optional<std::uint32_t> readUnsigned(const QDBusMessage& reply) { return read<quint32>(reply, "u"); }

std::optional<std::pair<int, int>> readIntegers(const QDBusMessage& reply) {
  if (!is(reply, "ii")) return std::nullopt;
  return std::pair{reply.arguments().at(0).toInt(), reply.arguments().at(1).toInt()};
}

std::optional<Role> readRole(const QDBusMessage& reply) {
  const auto number = readUnsigned(reply);
  if (!number) return std::nullopt;
  return static_cast<Role>(*number);
}

std::optional<States> readStates(const QDBusMessage& reply) {
  if (!is(reply, "au")) return std::nullopt;
  const auto argument = reply.arguments().constFirst().value<QDBusArgument>();
  std::uint64_t bits = 0;
  argument.beginArray();
  for (unsigned shift = 0; shift < 64 && !argument.atEnd(); shift += 32) {
    quint32 half = 0;
    argument >> half;
    bits |= std::uint64_t{half} << shift;
  }
  // Frees what the beginning made.
  argument.endArray();
  return States(bits);
}

std::vector<ElementReference> readReferences(const QDBusMessage& reply, std::size_t limit) {
  std::vector<ElementReference> result;
  if (!is(reply, "a(so)")) return result;
  const auto argument = reply.arguments().constFirst().value<QDBusArgument>();
  argument.beginArray();
  while (result.size() < limit && !argument.atEnd()) {
    QString service;
    QDBusObjectPath path;
    argument.beginStructure();
    argument >> service >> path;
    argument.endStructure();
    if (service.isEmpty() || path.path().endsWith(QLatin1String("/null"))) continue;
    result.push_back({std::move(service), path.path()});
  }
  argument.endArray();
  return result;
}

std::optional<int> readIntegerProperty(const QDBusMessage& reply) { return readProperty<int>(reply); }
std::optional<bool> readBoolProperty(const QDBusMessage& reply) { return readProperty<bool>(reply); }
std::optional<QString> readStringProperty(const QDBusMessage& reply) { return readProperty<QString>(reply); }

}  // namespace tavelo::linuxdesktop::atspi
