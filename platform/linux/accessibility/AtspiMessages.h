#pragma once

#include <QDBusMessage>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "platform/Accessibility.h"
#include "platform/linux/accessibility/ElementReference.h"

/// The accessibility bus's protocol: requests, and what their answers hold. An answer of another type than
/// the protocol's reads as absent. Pure functions.
namespace tavelo::linuxdesktop::atspi {

inline constexpr const char* accessible = "org.a11y.atspi.Accessible";
inline constexpr const char* action = "org.a11y.atspi.Action";
inline constexpr const char* application = "org.a11y.atspi.Application";
inline constexpr const char* editableText = "org.a11y.atspi.EditableText";
inline constexpr const char* text = "org.a11y.atspi.Text";

/// Numbers of the protocol; those that this program asks for.
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

/// `success` for an answer; otherwise why there is none.
platform::AXError outcome(const QDBusMessage& reply);

/// Whether nothing came in time to a request that was sent.
bool isTimeOut(const QDBusMessage& reply);

std::optional<bool> readBool(const QDBusMessage& reply);
std::optional<QString> readString(const QDBusMessage& reply);
std::optional<QStringList> readStrings(const QDBusMessage& reply);
std::optional<int> readInteger(const QDBusMessage& reply);
std::optional<std::pair<int, int>> readIntegers(const QDBusMessage& reply);
std::optional<std::uint32_t> readUnsigned(const QDBusMessage& reply);
std::optional<Role> readRole(const QDBusMessage& reply);
std::optional<States> readStates(const QDBusMessage& reply);
/// References to nothing are left out, and what is more than `limit`.
std::vector<ElementReference> readReferences(const QDBusMessage& reply, std::size_t limit);

// Properties come wrapped.
std::optional<int> readIntegerProperty(const QDBusMessage& reply);
std::optional<bool> readBoolProperty(const QDBusMessage& reply);
std::optional<QString> readStringProperty(const QDBusMessage& reply);

}  // namespace tavelo::linuxdesktop::atspi
