#pragma once

#include <QDBusMessage>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <cstdint>
#include <utility>
#include <vector>

#include "platform/Accessibility.h"
#include "platform/linux/accessibility/Result.h"

namespace tavelo::linuxdesktop {

/// Names an element on the accessibility bus: the application's bus name and the element's object path.
struct ElementReference {
  QString service;
  QString path;

  bool operator==(const ElementReference&) const = default;
};

/// The element that stands for a whole application.
inline ElementReference rootOf(const QString& service) {
  return {service, QStringLiteral("/org/a11y/atspi/accessible/root")};
}

}  // namespace tavelo::linuxdesktop

/// The accessibility bus's protocol: builds requests and reads replies. Pure functions.
namespace tavelo::linuxdesktop::atspi {

inline constexpr const char* accessible = "org.a11y.atspi.Accessible";
inline constexpr const char* action = "org.a11y.atspi.Action";
inline constexpr const char* application = "org.a11y.atspi.Application";
inline constexpr const char* component = "org.a11y.atspi.Component";
inline constexpr const char* editableText = "org.a11y.atspi.EditableText";
inline constexpr const char* text = "org.a11y.atspi.Text";

/// The protocol's numbers, as far as this program needs them.
enum class Role : std::uint32_t {
  unknown = 0,
  checkMenuItem = 8,
  menu = 33,
  menuBar = 34,
  menuItem = 35,
  passwordText = 40,
  popupMenu = 41,
  radioMenuItem = 45,
  tearOffMenuItem = 59,
  terminal = 60,
  paragraph = 73,
  applicationRoot = 75,
  documentFrame = 82,
  documentText = 94,
  documentWeb = 95,
  documentEmail = 96,
};
enum class State : unsigned {
  active = 1,
  editable = 7,
  focusable = 11,
  focused = 12,
  showing = 25,
  managesDescendants = 31,
  readOnly = 43
};

/// The states an element has.
class States final {
 public:
  States() = default;
  explicit States(std::uint64_t bits) : bits_(bits) {}
  bool has(State state) const { return (bits_ >> static_cast<unsigned>(state) & 1U) != 0; }

 private:
  std::uint64_t bits_ = 0;
};

QDBusMessage request(const ElementReference& element, const char* interface, const char* method,
                     const QVariantList& arguments = {});
QDBusMessage propertyRequest(const ElementReference& element, const char* interface, const char* property);

/// `success` if `reply` is an answer; otherwise why there is none.
platform::AXError outcome(const QDBusMessage& reply);

/// Whether the request was sent but its reply did not come in time.
bool isTimeOut(const QDBusMessage& reply);

// Each reads a reply. The error is `outcome(reply)`, or `noValue` if the application answered with a value of
// another type.
Result<bool> readBool(const QDBusMessage& reply);
Result<QString> readString(const QDBusMessage& reply);
Result<QStringList> readStrings(const QDBusMessage& reply);
Result<int> readInteger(const QDBusMessage& reply);
Result<std::pair<int, int>> readIntegers(const QDBusMessage& reply);
Result<std::uint32_t> readUnsigned(const QDBusMessage& reply);
Result<Role> readRole(const QDBusMessage& reply);
Result<States> readStates(const QDBusMessage& reply);
/// The first `most`. Leaves out null references.
Result<std::vector<ElementReference>> readReferences(const QDBusMessage& reply, std::size_t most);

// The same for a reply to `propertyRequest`, whose value is wrapped in a variant.
Result<int> readIntegerProperty(const QDBusMessage& reply);
Result<bool> readBoolProperty(const QDBusMessage& reply);
Result<QString> readStringProperty(const QDBusMessage& reply);
/// One that is not null.
Result<ElementReference> readReferenceProperty(const QDBusMessage& reply);

}  // namespace tavelo::linuxdesktop::atspi
