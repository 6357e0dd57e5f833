#pragma once

#include <cstdint>
#include <optional>

#include "platform/Accessibility.h"

namespace tavelo::simulated {

/// What a field does with a write by accessibility.
enum class WriteBehaviour : std::uint8_t {
  takes,
  /// The call fails.
  refuses,
  /// The call succeeds and nothing changes.
  pretends,
};

/// What a field answers when its value is read.
enum class ValueReading : std::uint8_t {
  text,
  /// The call fails.
  refused,
  /// A value that is no string.
  otherKind,
};

/// What a field answers when its selection is read.
enum class RangeReading : std::uint8_t {
  actual,
  /// The call fails.
  absent,
  /// `FieldBehaviour::givenRange`, whatever the text is.
  given,
};

/// How a text field behaves, attribute by attribute; the default is a well-behaved one.
struct FieldBehaviour {
  WriteBehaviour selectedText = WriteBehaviour::takes;
  WriteBehaviour value = WriteBehaviour::takes;
  WriteBehaviour selectedTextRange = WriteBehaviour::takes;
  ValueReading valueReading = ValueReading::text;
  RangeReading rangeReading = RangeReading::actual;
  platform::AXRange givenRange{};
  bool takesPaste = true;
  /// Its text never appears in an event.
  bool isSecret = false;
};

/// Behaviours that fields of real applications have; each can be changed further.
namespace tempers {

/// Takes everything.
FieldBehaviour ordinary();
/// Refuses the selected text, so that only the whole value can be set.
FieldBehaviour valueOnly();
/// Refuses every change, a paste included; its value can be read.
FieldBehaviour readOnly();
/// Refuses writes and reads of its value; a paste works.
FieldBehaviour hidesValue();
/// Refuses writes, shows its value; a paste works.
FieldBehaviour terminal();
/// Takes text in both ways and never tells its value.
FieldBehaviour password();
/// Reports success for every write and changes nothing; a paste works.
FieldBehaviour pretends();

}  // namespace tempers
}  // namespace tavelo::simulated
