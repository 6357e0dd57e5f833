#pragma once

#include <QStringView>
#include <cstdint>

namespace tavelo::linuxdesktop {

/// What a toolkit counts a text in.
enum class TextUnit { utf16, codePoint };

/// A part of a text, in offsets that count the toolkit's units.
struct TextSpan {
  int start;
  int end;
  bool operator==(const TextSpan&) const = default;
};

/// The unit in which a toolkit counted `text` if it says that the text is `count` long; `assumed` if that
/// does not tell.
TextUnit textUnit(QStringView text, std::int64_t count, TextUnit assumed);

/// Converts an offset in UTF-16 code units to the toolkit's unit. An offset outside the text becomes the
/// nearest end; one inside a surrogate pair becomes the end of the pair.
std::int64_t toolkitOffset(QStringView text, std::int64_t utf16Offset, TextUnit unit);

}  // namespace tavelo::linuxdesktop
