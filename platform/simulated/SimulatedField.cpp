#include "platform/simulated/SimulatedField.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>
#include <variant>

#include "platform/simulated/SimulatedApplication.h"
#include "platform/simulated/World.h"
#include "unicode/Unicode.h"

namespace tavelo::simulated {
namespace {

using platform::AXError;
using platform::AXRange;
using platform::AXValue;

std::int64_t lengthOf(const std::string& text) {
  return static_cast<std::int64_t>(unicode::utf16Length(text));
}

/// The answer to a write that changes nothing; absent if the field takes the write.
std::optional<AXError> withoutEffect(WriteBehaviour behaviour) {
  switch (behaviour) {
    case WriteBehaviour::takes:
      return std::nullopt;
    case WriteBehaviour::refuses:
      return AXError::failure;
    case WriteBehaviour::pretends:
      return AXError::success;
  }
  return AXError::failure;
}

std::string replacing(std::string text, std::string_view old, std::string_view by) {
  for (auto at = text.find(old); at != std::string::npos; at = text.find(old, at + by.size()))
    text.replace(at, old.size(), by);
  return text;
}

std::string upperCased(const std::string& text) {
  std::string result;
  for (std::size_t at = 0; at < text.size();) unicode::appendUpperCase(result, unicode::nextScalar(text, at));
  return result;
}

std::string changed(const std::string& text, PasteChange change) {
  switch (change) {
    case PasteChange::joinsLines:
      return replacing(text, "\n", " ");
    case PasteChange::upperCases:
      return upperCased(text);
    case PasteChange::makesEllipsis:
      return replacing(text, "...", "…");
    case PasteChange::makesCarriageReturns:
      return replacing(text, "\n", "\r\n");
    case PasteChange::none:
    case PasteChange::emptiesItself:
      break;
  }
  return text;
}

}  // namespace

SimulatedField::SimulatedField(World& world, SimulatedApplication& application, std::string title,
                               FieldBehaviour behaviour)
    : world_(world), application_(application), title_(std::move(title)), behaviour_(behaviour) {}

void SimulatedField::setValue(std::string value) {
  value_ = std::move(value);
  selection_ = {lengthOf(value_), 0};
}

void SimulatedField::select(std::int64_t location, std::int64_t length) {
  const std::int64_t end = lengthOf(value_);
  selection_.location = std::clamp<std::int64_t>(location, 0, end);
  selection_.length = std::clamp<std::int64_t>(length, 0, end - selection_.location);
}

void SimulatedField::type(const std::string& text) {
  replaceSelection(text);
  reportText();
}

void SimulatedField::paste(const std::string& text) {
  if (!behaviour_.takesPaste) {
    world_.report(WorldEvent::Kind::text, description() + " takes no paste");
    return;
  }
  replaceSelection(changed(text, behaviour_.pasteChange));
  if (behaviour_.pasteChange == PasteChange::emptiesItself) {
    world_.report(WorldEvent::Kind::text, description() + " uses up " + quoted(value_));
    setValue("");
  }
  reportText();
}

void SimulatedField::close() {
  closed_ = true;
  if (application_.focusedField() == this) application_.focus(nullptr);
}

std::string SimulatedField::description() const { return application_.description() + "/" + title_; }

AXError SimulatedField::copyAttribute(const std::string& attribute, AXValue& value) {
  if (attribute == platform::ax::value) return copyValue(value);
  if (attribute == platform::ax::selectedTextRange) return copyRange(value);
  if (attribute == platform::ax::title) {
    value = title_;
    return AXError::success;
  }
  return AXError::attributeUnsupported;
}

AXError SimulatedField::setAttribute(const std::string& attribute, const AXValue& value) {
  if (attribute == platform::ax::selectedText) return setSelectedText(value);
  if (attribute == platform::ax::value) return setWholeValue(value);
  if (attribute == platform::ax::selectedTextRange) return setRange(value);
  return AXError::attributeUnsupported;
}

AXError SimulatedField::copyValue(AXValue& value) const {
  if (!behaviour_.showsValue) return AXError::failure;
  value = value_;
  return AXError::success;
}

AXError SimulatedField::copyRange(AXValue& value) const {
  switch (behaviour_.rangeReading) {
    case RangeReading::actual:
      value = selection_;
      return AXError::success;
    case RangeReading::absent:
      return AXError::noValue;
    case RangeReading::given:
      value = behaviour_.givenRange;
      return AXError::success;
  }
  return AXError::failure;
}

AXError SimulatedField::setSelectedText(const AXValue& value) {
  const auto* text = std::get_if<std::string>(&value);
  if (text == nullptr) return AXError::illegalArgument;
  if (const auto answer = withoutEffect(behaviour_.selectedText)) return *answer;
  replaceSelection(*text);
  reportText();
  return AXError::success;
}

AXError SimulatedField::setWholeValue(const AXValue& value) {
  const auto* text = std::get_if<std::string>(&value);
  if (text == nullptr) return AXError::illegalArgument;
  if (const auto answer = withoutEffect(behaviour_.value)) return *answer;
  value_ = unicode::wellFormed(*text);
  // As in real toolkits, which put the caret at the start when the whole text is replaced.
  selection_ = {};
  reportText();
  return AXError::success;
}

AXError SimulatedField::setRange(const AXValue& value) {
  const auto* range = std::get_if<AXRange>(&value);
  if (range == nullptr) return AXError::illegalArgument;
  if (const auto answer = withoutEffect(behaviour_.selectedTextRange)) return *answer;
  select(range->location, range->length);
  return AXError::success;
}

void SimulatedField::replaceSelection(const std::string& text) {
  const std::string inserted = unicode::wellFormed(text);
  value_ = unicode::replacingUtf16(value_, static_cast<std::size_t>(selection_.location),
                                   static_cast<std::size_t>(selection_.length), inserted);
  select(selection_.location + lengthOf(inserted), 0);
}

void SimulatedField::reportText() {
  world_.report(WorldEvent::Kind::text,
                description() + (behaviour_.isSecret ? " has changed" : " holds " + quoted(value_)));
}

}  // namespace tavelo::simulated
