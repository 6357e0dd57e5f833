#include "platform/linux/accessibility/AtspiMessages.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <optional>

namespace tavelo::linuxdesktop::atspi {
namespace {

using platform::AXError;

bool is(const QDBusMessage& reply, const char* signature) {
  return reply.type() == QDBusMessage::ReplyMessage && reply.signature() == QLatin1String(signature) &&
         !reply.arguments().isEmpty();
}

/// Why `reply` has no value of the expected type.
AXError unreadable(const QDBusMessage& reply) {
  return reply.type() == QDBusMessage::ReplyMessage ? AXError::noValue : outcome(reply);
}

template <class Value>
Result<Value> read(const QDBusMessage& reply, const char* signature) {
  if (!is(reply, signature)) return unreadable(reply);
  return reply.arguments().constFirst().value<Value>();
}

template <class Value>
Result<Value> readProperty(const QDBusMessage& reply) {
  const auto wrapped = read<QDBusVariant>(reply, "v");
  if (!wrapped) return wrapped.error();
  const auto value = wrapped->variant();
  if (value.metaType() != QMetaType::fromType<Value>()) return AXError::noValue;
  return value.template value<Value>();
}

/// Absent if it is null.
std::optional<ElementReference> readReference(const QDBusArgument& argument) {
  QString service;
  QDBusObjectPath path;
  argument.beginStructure();
  argument >> service >> path;
  argument.endStructure();
  if (service.isEmpty() || path.path().endsWith(QLatin1String("/null"))) return std::nullopt;
  return ElementReference{std::move(service), path.path()};
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
    // Our own limit; nothing was sent.
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

Result<bool> readBool(const QDBusMessage& reply) { return read<bool>(reply, "b"); }
Result<QString> readString(const QDBusMessage& reply) { return read<QString>(reply, "s"); }
Result<QStringList> readStrings(const QDBusMessage& reply) { return read<QStringList>(reply, "as"); }
Result<int> readInteger(const QDBusMessage& reply) { return read<int>(reply, "i"); }
Result<std::uint32_t> readUnsigned(const QDBusMessage& reply) { return read<quint32>(reply, "u"); }

Result<std::pair<int, int>> readIntegers(const QDBusMessage& reply) {
  if (!is(reply, "ii")) return unreadable(reply);
  return std::pair{reply.arguments().at(0).toInt(), reply.arguments().at(1).toInt()};
}

Result<Role> readRole(const QDBusMessage& reply) {
  const auto number = readUnsigned(reply);
  if (!number) return number.error();
  return static_cast<Role>(*number);
}

Result<States> readStates(const QDBusMessage& reply) {
  if (!is(reply, "au")) return unreadable(reply);
  const auto argument = reply.arguments().constFirst().value<QDBusArgument>();
  std::uint64_t bits = 0;
  argument.beginArray();
  for (unsigned shift = 0; shift < 64 && !argument.atEnd(); shift += 32) {
    quint32 half = 0;
    argument >> half;
    bits |= std::uint64_t{half} << shift;
  }
  // Frees what `beginArray` allocated.
  argument.endArray();
  return States(bits);
}

Result<std::vector<ElementReference>> readReferences(const QDBusMessage& reply, std::size_t most) {
  if (!is(reply, "a(so)")) return unreadable(reply);
  std::vector<ElementReference> result;
  const auto argument = reply.arguments().constFirst().value<QDBusArgument>();
  argument.beginArray();
  while (result.size() < most && !argument.atEnd()) {
    if (auto reference = readReference(argument)) result.push_back(std::move(*reference));
  }
  argument.endArray();
  return result;
}

Result<int> readIntegerProperty(const QDBusMessage& reply) { return readProperty<int>(reply); }
Result<bool> readBoolProperty(const QDBusMessage& reply) { return readProperty<bool>(reply); }
Result<QString> readStringProperty(const QDBusMessage& reply) { return readProperty<QString>(reply); }

Result<ElementReference> readReferenceProperty(const QDBusMessage& reply) {
  const auto argument = readProperty<QDBusArgument>(reply);
  if (!argument) return argument.error();
  if (argument->currentSignature() != QLatin1String("(so)")) return AXError::noValue;
  if (auto reference = readReference(*argument)) return std::move(*reference);
  return AXError::noValue;
}

}  // namespace tavelo::linuxdesktop::atspi
