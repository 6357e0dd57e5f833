#pragma once

#include <cstdint>

#include "platform/Accessibility.h"
#include "platform/Time.h"

namespace tavelo::simulated {

/// What a field does when accessibility writes to it.
enum class WriteBehaviour : std::uint8_t {
  takes,
  /// The call fails.
  refuses,
  /// The call succeeds, but nothing changes.
  pretends,
};

/// What a field answers when accessibility reads its selection.
enum class RangeReading : std::uint8_t {
  actual,
  /// The call fails.
  absent,
  /// `FieldBehaviour::givenRange`, whatever the text is.
  given,
};

/// What a field makes of pasted text.
enum class PasteChange : std::uint8_t {
  none,
  /// Takes one line only: line breaks become spaces.
  joinsLines,
  upperCases,
  /// Uses the whole text up, as a chat does that sends at once.
  emptiesItself,
  /// Three dots become one character.
  makesEllipsis,
  /// Line feeds become carriage returns with line feeds.
  makesCarriageReturns,
};

/// How a text field behaves. The default takes every write, shows its value and takes a paste.
///
/// The functions return behaviours found in real applications, under the names that stories use for them.
/// Each can be changed further.
struct FieldBehaviour {
  WriteBehaviour selectedText = WriteBehaviour::takes;
  WriteBehaviour value = WriteBehaviour::takes;
  WriteBehaviour selectedTextRange = WriteBehaviour::takes;
  bool showsValue = true;
  RangeReading rangeReading = RangeReading::actual;
  platform::AXRange givenRange{};
  bool takesPaste = true;
  PasteChange pasteChange = PasteChange::none;
  /// From a paste command until the field reads the pasteboard.
  platform::Seconds pasteDelay{0};
  /// Keeps the text out of all events.
  bool isSecret = false;

  /// Refuses the selected text; only the whole value can be written.
  static FieldBehaviour valueOnly();
  /// Refuses every write, but shows its value and takes a paste.
  static FieldBehaviour pasteOnly();
  /// Refuses every write and every read, but takes a paste.
  static FieldBehaviour terminal();
  /// Refuses text and does not show its value, but takes a paste.
  static FieldBehaviour password();
  /// Shows its value, but refuses every change, including a paste.
  static FieldBehaviour readOnly();
  /// Reports success for every write, but changes nothing. Takes a paste.
  static FieldBehaviour falsePromise();
};

}  // namespace tavelo::simulated
