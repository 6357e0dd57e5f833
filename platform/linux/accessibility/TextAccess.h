#pragma once

#include <QString>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/Accessibility.h"
#include "platform/linux/accessibility/AccessibilityBus.h"
#include "platform/linux/accessibility/ElementReference.h"
#include "platform/linux/accessibility/TextUnits.h"

namespace tavelo::linuxdesktop {

/// Reads and writes the texts of other applications. Strings are UTF-8; ranges count UTF-16 code units,
/// whatever the toolkit counts. Main thread.
///
/// A toolkit's word that it has written means nothing; a write has failed when text, length and caret are
/// what they were before it. A write that an application, having answered a moment before, does not confirm
/// in time counts as done: it will be performed, and trying another way would bring the text twice.
class TextAccess final {
 public:
  explicit TextAccess(AccessibilityBus& bus) : bus_(bus) {}

  /// The whole text. Refused for a password, for a terminal (which shows lines cut to its width), and for a
  /// text that is only a frame around other elements.
  platform::AXError value(const ElementReference& element, std::string& value);
  platform::AXError setValue(const ElementReference& element, const std::string& value);

  /// What is selected; empty when nothing is. Refused for a password.
  platform::AXError selectedText(const ElementReference& element, std::string& text);
  /// Replaces the selection, or inserts at the caret, which then stands behind the text. Passwords too.
  platform::AXError setSelectedText(const ElementReference& element, const std::string& text);

  /// The selection, or the caret with length 0.
  platform::AXError selectedTextRange(const ElementReference& element, platform::AXRange& range);
  platform::AXError setSelectedTextRange(const ElementReference& element, const platform::AXRange& range);

 private:
  /// How the toolkits behind one protocol differ.
  struct Toolkit {
    bool isQt = false;
    TextUnit usualUnit() const { return isQt ? TextUnit::utf16 : TextUnit::codePoint; }
    int insertionLength(const QString& text) const;
  };
  /// An element with a text, offsets in the toolkit's units: 0 ≤ start ≤ end ≤ count.
  struct Field {
    Toolkit toolkit;
    bool isEditable = false;
    bool isPassword = false;
    bool isTerminal = false;
    int count = 0;
    int start = 0;
    int end = 0;
    bool hasSelection() const { return start < end; }
  };
  /// What a write changes, unless it failed.
  struct Snapshot {
    std::optional<int> count;
    std::optional<int> caret;
    std::optional<QString> text;
    bool operator==(const Snapshot&) const = default;
  };
  struct Span {
    int start;
    int end;
  };

  platform::AXError describe(const ElementReference& element, Field& field);
  platform::AXError locate(const ElementReference& element, Field& field);
  bool mayWrite() const;
  platform::AXError readText(const ElementReference& element, Span span, QString& text);
  std::vector<QDBusMessage> snapshotRequests(const ElementReference& element,
                                             std::optional<Span> window) const;

  AccessibilityBus& bus_;
};

}  // namespace tavelo::linuxdesktop
