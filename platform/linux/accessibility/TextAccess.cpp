#include "platform/linux/accessibility/TextAccess.h"

#include <QDBusMessage>
#include <QStringList>
#include <algorithm>
#include <chrono>
#include <iterator>
#include <vector>

#include "platform/linux/accessibility/AtspiMessages.h"

namespace tavelo::linuxdesktop {
namespace {

using atspi::Role;
using atspi::State;
using platform::AXError;

/// As far around a write the text is compared; a large document is not read whole for it.
constexpr int comparedAround = 100;

/// The protocol's "up to the end".
constexpr int textEnd = -1;

/// A write is not begun with less, since an answer that comes too late tells nothing.
constexpr std::chrono::milliseconds writeTime{50};

/// Stands for an element inside the text.
constexpr QChar embeddedObject{0xFFFC};

QDBusMessage textRequest(const ElementReference& element, const char* method,
                         const QVariantList& arguments = {}) {
  return atspi::request(element, atspi::text, method, arguments);
}

QDBusMessage textProperty(const ElementReference& element, const char* property) {
  return atspi::propertyRequest(element, atspi::text, property);
}

/// Whether a write was sent and all that is known of it is that the application takes its time: it kept the
/// answer, or said "done" and kept the answer to the look behind it.
bool isUnconfirmed(const QDBusMessage& write, const QDBusMessage& look) {
  return atspi::isTimeOut(write) ||
         (atspi::readBool(write).value_or(false) && atspi::outcome(look) == AXError::cannotComplete);
}

/// A D-Bus string ends at a NUL, which no field shows anyway.
QString withoutNul(const std::string& text) { return QString::fromStdString(text).remove(QChar::Null); }

}  // namespace

/// Qt takes UTF-16 code units, and fills up with NULs when there are fewer; all others take bytes.
int TextAccess::Toolkit::insertionLength(const QString& text) const {
  return static_cast<int>(isQt ? text.size() : text.toUtf8().size());
}

AXError TextAccess::value(const ElementReference& element, std::string& value) {
  Field field;
  if (const auto error = describe(element, field); error != AXError::success) return error;
  if (field.isPassword || field.isTerminal) return AXError::attributeUnsupported;
  QString text;
  if (const auto error = readText(element, {0, textEnd}, text); error != AXError::success) return error;
  if (text.contains(embeddedObject)) return AXError::noValue;
  value = text.toStdString();
  return AXError::success;
}

AXError TextAccess::setValue(const ElementReference& element, const std::string& value) {
  Field field;
  if (const auto error = describe(element, field); error != AXError::success) return error;
  if (!field.isEditable || field.isPassword) return AXError::attributeUnsupported;
  const QString wanted = withoutNul(value);
  QString before;
  if (const auto error = readText(element, {0, textEnd}, before); error != AXError::success) return error;
  if (before == wanted) return AXError::success;
  if (!mayWrite()) return AXError::cannotComplete;
  const auto replies = bus_.call({atspi::request(element, atspi::editableText, "SetTextContents", {wanted}),
                                  textRequest(element, "GetText", {0, textEnd})});
  if (isUnconfirmed(replies[0], replies[1])) return AXError::success;
  const auto after = atspi::readString(replies[1]);
  return after && *after != before ? AXError::success : AXError::failure;
}

AXError TextAccess::selectedText(const ElementReference& element, std::string& text) {
  Field field;
  if (const auto error = describe(element, field); error != AXError::success) return error;
  if (field.isPassword) return AXError::attributeUnsupported;
  if (const auto error = locate(element, field); error != AXError::success) return error;
  QString selected;
  if (field.hasSelection()) {
    const auto error = readText(element, {field.start, field.end}, selected);
    if (error != AXError::success) return error;
  }
  text = selected.toStdString();
  return AXError::success;
}

AXError TextAccess::setSelectedText(const ElementReference& element, const std::string& text) {
  Field field;
  if (const auto error = describe(element, field); error != AXError::success) return error;
  if (!field.isEditable) return AXError::attributeUnsupported;
  if (const auto error = locate(element, field); error != AXError::success) return error;
  if (!mayWrite()) return AXError::cannotComplete;

  const QString inserted = withoutNul(text);
  const int countWithoutSelection = field.count - (field.end - field.start);
  const Span around{std::max(field.start - comparedAround, 0),
                    field.start + std::min(countWithoutSelection - field.start, comparedAround)};
  const auto snapshot = snapshotRequests(element, field.isPassword ? std::nullopt : std::optional(around));
  const auto snapshotLength = static_cast<std::ptrdiff_t>(snapshot.size());

  // All in one go: an application takes its requests in order. What the insertion is measured against is the
  // text without the selection, so that a failed one is noticed though the selection went.
  std::vector<QDBusMessage> requests;
  if (field.hasSelection())
    requests.push_back(atspi::request(element, atspi::editableText, "DeleteText", {field.start, field.end}));
  requests.insert(requests.end(), snapshot.begin(), snapshot.end());
  const auto insertion = static_cast<std::ptrdiff_t>(requests.size());
  requests.push_back(atspi::request(element, atspi::editableText, "InsertText",
                                    {field.start, inserted, field.toolkit.insertionLength(inserted)}));
  requests.insert(requests.end(), snapshot.begin(), snapshot.end());
  const auto replies = bus_.call(requests);
  const auto insertionReply = replies.begin() + insertion;
  if (isUnconfirmed(*insertionReply, *std::next(insertionReply))) return AXError::success;

  const auto read = [](auto reply, std::ptrdiff_t length) {
    return Snapshot{atspi::readIntegerProperty(*reply), atspi::readIntegerProperty(*std::next(reply)),
                    length > 2 ? atspi::readString(*std::next(reply, 2)) : std::nullopt};
  };
  const auto before = read(insertionReply - snapshotLength, snapshotLength);
  const auto after = read(std::next(insertionReply), snapshotLength);
  if (!before.count || !after.count || before == after) return AXError::failure;

  // The toolkit's own count of what came in; some move the caret to the end of the field, some leave it.
  const std::int64_t inside = std::max(*after.count - std::int64_t{*before.count}, std::int64_t{0});
  const auto caret = static_cast<int>(std::min<std::int64_t>(field.start + inside, *after.count));
  if (after.caret != caret) bus_.call(textRequest(element, "SetCaretOffset", {caret}));
  return AXError::success;
}

AXError TextAccess::selectedTextRange(const ElementReference& element, platform::AXRange& range) {
  Field field;
  if (const auto error = describe(element, field); error != AXError::success) return error;
  if (field.isPassword) return AXError::attributeUnsupported;
  if (const auto error = locate(element, field); error != AXError::success) return error;
  QString before;
  QString selected;
  // An application reads (0, 0) as it likes.
  if (field.start > 0) {
    if (const auto error = readText(element, {0, field.start}, before); error != AXError::success)
      return error;
  }
  if (field.hasSelection()) {
    const auto error = readText(element, {field.start, field.end}, selected);
    if (error != AXError::success) return error;
  }
  range = {before.size(), selected.size()};
  return AXError::success;
}

AXError TextAccess::setSelectedTextRange(const ElementReference& element, const platform::AXRange& range) {
  Field field;
  if (const auto error = describe(element, field); error != AXError::success) return error;
  if (field.isPassword) return AXError::attributeUnsupported;
  if (const auto error = locate(element, field); error != AXError::success) return error;
  QString text;
  if (const auto error = readText(element, {0, textEnd}, text); error != AXError::success) return error;
  if (!mayWrite()) return AXError::cannotComplete;

  const auto unit = textUnit(text, field.count, field.toolkit.usualUnit());
  const auto location = std::clamp<std::int64_t>(range.location, 0, text.size());
  const auto length = std::clamp<std::int64_t>(range.length, 0, text.size() - location);
  const int start = static_cast<int>(toolkitOffset(text, location, unit));
  const int end = static_cast<int>(toolkitOffset(text, location + length, unit));
  if (start == end) {
    bus_.call(textRequest(element, "SetCaretOffset", {start}));
  } else {
    bus_.call(field.hasSelection() ? textRequest(element, "SetSelection", {0, start, end})
                                   : textRequest(element, "AddSelection", {start, end}));
  }
  if (const auto error = locate(element, field); error != AXError::success) return error;
  return field.start == start && field.end == end ? AXError::success : AXError::failure;
}

AXError TextAccess::describe(const ElementReference& element, Field& field) {
  const auto replies =
      bus_.call({atspi::request(element, atspi::accessible, "GetInterfaces"),
                 atspi::request(element, atspi::accessible, "GetState"),
                 atspi::request(element, atspi::accessible, "GetRole"),
                 atspi::propertyRequest(rootOf(element.service), atspi::application, "ToolkitName")});
  if (const auto error = atspi::outcome(replies[0]); error != AXError::success) return error;
  const auto interfaces = atspi::readStrings(replies[0]);
  const auto states = atspi::readStates(replies[1]);
  const auto role = atspi::readRole(replies[2]);
  if (!interfaces || !states || !role || !interfaces->contains(QLatin1String(atspi::text)))
    return AXError::attributeUnsupported;
  // The write itself would be answered with "done" by a toolkit that cannot, and by a read-only field.
  field.isEditable = interfaces->contains(QLatin1String(atspi::editableText)) &&
                     states->has(State::editable) && !states->has(State::readOnly) && *role != Role::terminal;
  field.isPassword = *role == Role::passwordText;
  field.isTerminal = *role == Role::terminal;
  field.toolkit.isQt = atspi::readStringProperty(replies[3]).value_or(QString()) == QLatin1String("Qt");
  return AXError::success;
}

AXError TextAccess::locate(const ElementReference& element, Field& field) {
  const auto replies =
      bus_.call({textProperty(element, "CharacterCount"), textProperty(element, "CaretOffset"),
                 textRequest(element, "GetNSelections"), textRequest(element, "GetSelection", {0})});
  if (const auto error = atspi::outcome(replies[0]); error != AXError::success) return error;
  const auto count = atspi::readIntegerProperty(replies[0]);
  const auto caret = atspi::readIntegerProperty(replies[1]);
  if (!count || *count < 0 || !caret || *caret < 0 || *caret > *count) return AXError::noValue;
  field.count = *count;
  field.start = field.end = *caret;
  const auto selection = atspi::readIntegers(replies[3]);
  if (atspi::readInteger(replies[2]).value_or(0) > 0 && selection) {
    const auto [start, end] = std::minmax(selection->first, selection->second);
    if (start >= 0 && end <= *count && start < end) {
      field.start = start;
      field.end = end;
    }
  }
  return AXError::success;
}

bool TextAccess::mayWrite() const { return bus_.budget().allowance() >= writeTime; }

AXError TextAccess::readText(const ElementReference& element, Span span, QString& text) {
  const auto reply = bus_.call(textRequest(element, "GetText", {span.start, span.end}));
  if (const auto error = atspi::outcome(reply); error != AXError::success) return error;
  const auto read = atspi::readString(reply);
  if (!read) return AXError::noValue;
  text = *read;
  return AXError::success;
}

std::vector<QDBusMessage> TextAccess::snapshotRequests(const ElementReference& element,
                                                       std::optional<Span> window) const {
  std::vector<QDBusMessage> requests{textProperty(element, "CharacterCount"),
                                     textProperty(element, "CaretOffset")};
  if (window) requests.push_back(textRequest(element, "GetText", {window->start, window->end}));
  return requests;
}

}  // namespace tavelo::linuxdesktop
