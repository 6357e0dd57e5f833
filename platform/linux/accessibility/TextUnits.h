#pragma once

#include <QStringView>
#include <cstdint>

namespace tavelo::linuxdesktop {

/// What a toolkit counts a text in.
enum class TextUnit { utf16, codePoint };

/// What `text` was counted in when a toolkit says that it is `count` long; `assumed` when that does not tell.
TextUnit textUnit(QStringView text, std::int64_t count, TextUnit assumed);

/// An offset in UTF-16 code units as the toolkit counts it. One outside of the text becomes the nearest end,
/// one inside of a surrogate pair the pair's end.
std::int64_t toolkitOffset(QStringView text, std::int64_t utf16Offset, TextUnit unit);

}  // namespace tavelo::linuxdesktop
