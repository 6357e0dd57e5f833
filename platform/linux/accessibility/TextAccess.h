#pragma once

#include <QString>
#include <string>

#include "platform/Accessibility.h"
#include "platform/linux/accessibility/AccessibilityBus.h"
#include "platform/linux/accessibility/AtspiMessages.h"
#include "platform/linux/accessibility/Result.h"
#include "platform/linux/accessibility/TextUnits.h"

namespace tavelo::linuxdesktop {

/// Reads and writes the texts of other applications. Strings are UTF-8; ranges count UTF-16 code units,
/// whatever the toolkit counts. Main thread.
///
/// Toolkits report success for writes that did nothing. So a write has failed if text, length and caret are
/// the same as before. If an application answered a moment ago but does not confirm a write in time, the
/// write counts as done: the application will still perform it, and trying another way would insert the text
/// twice.
class TextAccess final {
 public:
  explicit TextAccess(AccessibilityBus& bus) : bus_(bus) {}

  /// The whole text. Refused for a password, for a terminal (which shows lines cut to its width), for a text
  /// that contains other elements, for one of more than a million characters, and for a paragraph of a
  /// document: a text that went over several of them would seem to be missing.
  Result<std::string> value(const ElementReference& element);
  platform::AXError setValue(const ElementReference& element, const std::string& value);

  /// Empty if nothing is selected. Refused for a password.
  Result<std::string> selectedText(const ElementReference& element);
  /// Replaces the selection, or inserts at the caret; the caret then stands after the text. Passwords too.
  platform::AXError setSelectedText(const ElementReference& element, const std::string& text);

  /// The selection, or the caret with length 0. Refused for a password.
  Result<platform::AXRange> selectedTextRange(const ElementReference& element);
  platform::AXError setSelectedTextRange(const ElementReference& element, const platform::AXRange& range);

  /// A text's length and its selection in the toolkit's own units, with 0 ≤ start ≤ end ≤ count. Without a
  /// selection, both ends are the caret.
  struct Position {
    int count;
    TextSpan selection;
  };
  Result<Position> locate(const ElementReference& element);
  /// Selects `wanted`, or puts the caret there if it is empty. `now` tells what is selected now.
  void select(const ElementReference& element, const Position& now, TextSpan wanted);

 private:
  struct Field {
    TextUnit usualUnit() const { return isQt ? TextUnit::utf16 : TextUnit::codePoint; }
    int insertionLength(const QString& text) const;

    bool isEditable;
    bool isPassword;
    bool isTerminal;
    bool isParagraph;
    /// Too long to be read whole.
    bool isLarge;
    bool isQt;
  };

  Result<Field> describe(const ElementReference& element);
  /// The same; refused for a password.
  Result<Field> describeReadable(const ElementReference& element);
  Result<QString> readWhole(const ElementReference& element, const Field& field);
  /// Empty, without asking, if `span` is. Refused if it is too long.
  Result<QString> readText(const ElementReference& element, TextSpan span);
  bool mayWrite() const;

  AccessibilityBus& bus_;
};

}  // namespace tavelo::linuxdesktop
