#include "platform/linux/accessibility/TextAccess.h"

#include <QStringList>
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <optional>

#include "platform/linux/accessibility/RequestBurst.h"

namespace tavelo::linuxdesktop {
namespace {

using atspi::Role;
using atspi::State;
using platform::AXError;

/// The protocol's "up to the end".
constexpr TextSpan wholeText{0, -1};

/// A write needs at least this much time left: an answer that comes too late tells nothing.
constexpr std::chrono::milliseconds writeTime{50};

/// Larger texts are not handed up: reading, comparing and searching them would take longer than a turn may.
constexpr int mostCharacters = 1'000'000;

/// Stands for an element inside the text.
constexpr QChar embeddedObject{0xFFFC};

QDBusMessage textRequest(const ElementReference& element, const char* method,
                         const QVariantList& arguments = {}) {
  return atspi::request(element, atspi::text, method, arguments);
}

QDBusMessage textProperty(const ElementReference& element, const char* property) {
  return atspi::propertyRequest(element, atspi::text, property);
}

QDBusMessage getText(const ElementReference& element, TextSpan span) {
  return textRequest(element, "GetText", {span.start, span.end});
}

/// The part of a text of length `count` to compare before and after a write. Large documents are not read
/// whole.
TextSpan surroundings(int count, TextSpan selection) {
  constexpr int reach = 100;
  return {std::max(selection.start - reach, 0), selection.start + std::min(count - selection.end, reach)};
}

/// Where the caret belongs after an insertion at `start`. The text's growth says how much came in, in the
/// toolkit's own unit.
int caretAfterInsertion(int start, int countBefore, int countAfter) {
  const std::int64_t growth = std::max<std::int64_t>(std::int64_t{countAfter} - countBefore, 0);
  return static_cast<int>(std::min<std::int64_t>(start + growth, countAfter));
}

/// What changes unless a write failed.
struct Snapshot {
  Result<int> count;
  Result<int> caret;
  Result<QString> text;
  bool operator==(const Snapshot&) const = default;
};

/// The replies that make a snapshot. Adds the requests to `burst`; without `window` no text is read.
struct SnapshotReplies {
  SnapshotReplies(RequestBurst& burst, const ElementReference& element, const std::optional<TextSpan>& window)
      : count(burst.add(textProperty(element, "CharacterCount"), atspi::readIntegerProperty)),
        caret(burst.add(textProperty(element, "CaretOffset"), atspi::readIntegerProperty)) {
    if (window) text = burst.add(getText(element, *window), atspi::readString);
  }

  Snapshot read(const RequestBurst& burst) const {
    return {burst.read(count), burst.read(caret), text ? burst.read(*text) : AXError::attributeUnsupported};
  }

  RequestBurst::Reply<int> count;
  RequestBurst::Reply<int> caret;
  std::optional<RequestBurst::Reply<QString>> text;
};

/// Whether a write was sent and the application has not confirmed it yet: it did not answer, or it reported
/// success and then did not answer the `next` request.
template <class Value>
bool isUnconfirmed(const RequestBurst& burst, RequestBurst::Reply<bool> write,
                   RequestBurst::Reply<Value> next) {
  return burst.timedOut(write) ||
         (burst.read(write).valueOr(false) && burst.read(next).error() == AXError::cannotComplete);
}

/// A D-Bus string ends at a NUL, which no field shows anyway.
QString withoutNul(const std::string& text) { return QString::fromStdString(text).remove(QChar::Null); }

}  // namespace

/// Qt takes UTF-16 code units, and pads with NULs if there are fewer; all others take bytes.
int TextAccess::Field::insertionLength(const QString& text) const {
  return static_cast<int>(isQt ? text.size() : text.toUtf8().size());
}

Result<std::string> TextAccess::value(const ElementReference& element) {
  const auto field = describeReadable(element);
  if (!field) return field.error();
  if (field->isTerminal || field->isParagraph) return AXError::attributeUnsupported;
  const auto text = readWhole(element, *field);
  if (!text) return text.error();
  if (text->contains(embeddedObject)) return AXError::noValue;
  return text->toStdString();
}

AXError TextAccess::setValue(const ElementReference& element, const std::string& value) {
  const auto field = describeReadable(element);
  if (!field) return field.error();
  if (!field->isEditable) return AXError::attributeUnsupported;
  const QString wanted = withoutNul(value);
  const auto before = readWhole(element, *field);
  if (!before) return before.error();
  if (*before == wanted) return AXError::success;
  if (!mayWrite()) return AXError::cannotComplete;

  RequestBurst burst(bus_);
  const auto write =
      burst.add(atspi::request(element, atspi::editableText, "SetTextContents", {wanted}), atspi::readBool);
  const auto afterReply = burst.add(getText(element, wholeText), atspi::readString);
  burst.send();
  if (isUnconfirmed(burst, write, afterReply)) return AXError::success;
  const auto after = burst.read(afterReply);
  return after && *after != *before ? AXError::success : AXError::failure;
}

Result<std::string> TextAccess::selectedText(const ElementReference& element) {
  const auto field = describeReadable(element);
  if (!field) return field.error();
  const auto position = locate(element);
  if (!position) return position.error();
  const auto text = readText(element, position->selection);
  if (!text) return text.error();
  return text->toStdString();
}

AXError TextAccess::setSelectedText(const ElementReference& element, const std::string& text) {
  const auto field = describe(element);
  if (!field) return field.error();
  if (!field->isEditable) return AXError::attributeUnsupported;
  const auto position = locate(element);
  if (!position) return position.error();
  if (!mayWrite()) return AXError::cannotComplete;

  const auto [start, end] = position->selection;
  const QString inserted = withoutNul(text);
  std::optional<TextSpan> window;
  if (!field->isPassword) window = surroundings(position->count, position->selection);
  RequestBurst burst(bus_);
  if (start < end)
    burst.add(atspi::request(element, atspi::editableText, "DeleteText", {start, end}), atspi::readBool);
  // Taken after the deletion, so that a failed insertion is noticed even if the selection is gone.
  const SnapshotReplies beforeReplies(burst, element, window);
  const auto insertion = burst.add(atspi::request(element, atspi::editableText, "InsertText",
                                                  {start, inserted, field->insertionLength(inserted)}),
                                   atspi::readBool);
  const SnapshotReplies afterReplies(burst, element, window);
  burst.send();
  if (isUnconfirmed(burst, insertion, afterReplies.count)) return AXError::success;
  const auto before = beforeReplies.read(burst);
  const auto after = afterReplies.read(burst);
  if (!before.count || !after.count || before == after) return AXError::failure;

  // Some toolkits move the caret to the end of the field, and some leave it where it was.
  const int caret = caretAfterInsertion(start, *before.count, *after.count);
  if (after.caret != caret) bus_.call(textRequest(element, "SetCaretOffset", {caret}));
  return AXError::success;
}

Result<platform::AXRange> TextAccess::selectedTextRange(const ElementReference& element) {
  const auto field = describeReadable(element);
  if (!field) return field.error();
  const auto position = locate(element);
  if (!position) return position.error();
  const auto before = readText(element, {0, position->selection.start});
  if (!before) return before.error();
  const auto selected = readText(element, position->selection);
  if (!selected) return selected.error();
  return platform::AXRange{before->size(), selected->size()};
}

AXError TextAccess::setSelectedTextRange(const ElementReference& element, const platform::AXRange& range) {
  const auto field = describeReadable(element);
  if (!field) return field.error();
  const auto before = locate(element);
  if (!before) return before.error();
  const auto text = readWhole(element, *field);
  if (!text) return text.error();
  if (!mayWrite()) return AXError::cannotComplete;

  const auto unit = textUnit(*text, before->count, field->usualUnit());
  const auto location = std::clamp<std::int64_t>(range.location, 0, text->size());
  const auto length = std::clamp<std::int64_t>(range.length, 0, text->size() - location);
  const TextSpan wanted{static_cast<int>(toolkitOffset(*text, location, unit)),
                        static_cast<int>(toolkitOffset(*text, location + length, unit))};
  select(element, *before, wanted);
  const auto after = locate(element);
  if (!after) return after.error();
  return after->selection == wanted ? AXError::success : AXError::failure;
}

void TextAccess::select(const ElementReference& element, const Position& now, TextSpan wanted) {
  if (wanted.start == wanted.end) {
    bus_.call(textRequest(element, "SetCaretOffset", {wanted.start}));
  } else {
    const bool hasSelection = now.selection.start < now.selection.end;
    bus_.call(hasSelection ? textRequest(element, "SetSelection", {0, wanted.start, wanted.end})
                           : textRequest(element, "AddSelection", {wanted.start, wanted.end}));
  }
}

Result<TextAccess::Field> TextAccess::describe(const ElementReference& element) {
  RequestBurst burst(bus_);
  const auto addRequest = [&](const char* method, auto reader) {
    return burst.add(atspi::request(element, atspi::accessible, method), reader);
  };
  const auto interfacesReply = addRequest("GetInterfaces", atspi::readStrings);
  const auto statesReply = addRequest("GetState", atspi::readStates);
  const auto roleReply = addRequest("GetRole", atspi::readRole);
  const auto count = burst.add(textProperty(element, "CharacterCount"), atspi::readIntegerProperty);
  const auto toolkit =
      burst.add(atspi::propertyRequest(rootOf(element.service), atspi::application, "ToolkitName"),
                atspi::readStringProperty);
  burst.send();
  const auto interfaces = burst.read(interfacesReply);
  const auto states = burst.read(statesReply);
  const auto role = burst.read(roleReply);
  if (!interfaces) return interfaces.error();
  if (!states || !role || !interfaces->contains(QLatin1String(atspi::text)))
    return AXError::attributeUnsupported;
  return Field{
      // Toolkits that cannot write, and read-only fields, would report success for the write itself.
      .isEditable = interfaces->contains(QLatin1String(atspi::editableText)) &&
                    states->has(State::editable) && !states->has(State::readOnly) && *role != Role::terminal,
      .isPassword = *role == Role::passwordText,
      .isTerminal = *role == Role::terminal,
      .isParagraph = *role == Role::paragraph,
      .isLarge = burst.read(count).valueOr(0) > mostCharacters,
      .isQt = burst.read(toolkit).valueOr({}) == QLatin1String("Qt")};
}

Result<TextAccess::Field> TextAccess::describeReadable(const ElementReference& element) {
  const auto field = describe(element);
  return field && field->isPassword ? AXError::attributeUnsupported : field;
}

Result<TextAccess::Position> TextAccess::locate(const ElementReference& element) {
  RequestBurst burst(bus_);
  const auto countReply = burst.add(textProperty(element, "CharacterCount"), atspi::readIntegerProperty);
  const auto caretReply = burst.add(textProperty(element, "CaretOffset"), atspi::readIntegerProperty);
  const auto selections = burst.add(textRequest(element, "GetNSelections"), atspi::readInteger);
  const auto selection = burst.add(textRequest(element, "GetSelection", {0}), atspi::readIntegers);
  burst.send();
  const auto count = burst.read(countReply);
  if (!count) return count.error();
  const int caret = burst.read(caretReply).valueOr(-1);
  if (caret < 0 || caret > *count) return AXError::noValue;
  if (burst.read(selections).valueOr(0) > 0) {
    const auto [one, other] = burst.read(selection).valueOr({caret, caret});
    const auto [start, end] = std::minmax(one, other);
    if (start >= 0 && end <= *count && start < end) return Position{*count, {start, end}};
  }
  return Position{*count, {caret, caret}};
}

bool TextAccess::mayWrite() const { return bus_.budget().allowance() >= writeTime; }

Result<QString> TextAccess::readWhole(const ElementReference& element, const Field& field) {
  return field.isLarge ? AXError::noValue : readText(element, wholeText);
}

Result<QString> TextAccess::readText(const ElementReference& element, TextSpan span) {
  // Applications disagree about what (0, 0) means.
  if (span.start == span.end) return QString();
  if (span.end - span.start > mostCharacters) return AXError::noValue;
  auto text = atspi::readString(bus_.call(getText(element, span)));
  // The application may have claimed another length.
  if (text && text->size() > 2 * qsizetype{mostCharacters}) return AXError::noValue;
  return text;
}

}  // namespace tavelo::linuxdesktop
