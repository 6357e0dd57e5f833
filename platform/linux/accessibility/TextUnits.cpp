#include "platform/linux/accessibility/TextUnits.h"

#include <algorithm>

namespace tavelo::linuxdesktop {
namespace {

/// A lone surrogate counts as one.
std::int64_t codePoints(QStringView text) {
  std::int64_t count = 0;
  for (qsizetype i = 0; i < text.size(); ++i, ++count)
    if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) ++i;
  return count;
}

}  // namespace

TextUnit textUnit(QStringView text, std::int64_t count, TextUnit assumed) {
  const std::int64_t points = codePoints(text);
  if (points == text.size()) return assumed;
  if (count == points) return TextUnit::codePoint;
  if (count == text.size()) return TextUnit::utf16;
  return assumed;
}

std::int64_t toolkitOffset(QStringView text, std::int64_t utf16Offset, TextUnit unit) {
  auto offset = std::clamp<std::int64_t>(utf16Offset, 0, text.size());
  const bool cutsPair = offset > 0 && offset < text.size() && text[offset - 1].isHighSurrogate() &&
                        text[offset].isLowSurrogate();
  if (cutsPair) ++offset;
  return unit == TextUnit::utf16 ? offset : codePoints(text.first(offset));
}

}  // namespace tavelo::linuxdesktop
