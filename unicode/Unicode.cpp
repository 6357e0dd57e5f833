#include "unicode/Unicode.h"

#include <algorithm>
#include <array>
#include <memory>

#include <unicode/brkiter.h>
#include <unicode/casemap.h>
#include <unicode/normalizer2.h>
#include <unicode/stringpiece.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

namespace tavelo::unicode {
namespace {

// ICU counts in 32-bit integers. The program's texts are far shorter; a longer one is cut, not misread.
constexpr std::size_t icuLimit = 0x3FFFFFFF;

std::string_view withinLimit(std::string_view text) {
  return text.substr(0, std::min(text.size(), icuLimit));
}

icu::UnicodeString toUtf16(std::string_view text) {
  text = withinLimit(text);
  return icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
}

std::string toUtf8(const icu::UnicodeString& text) {
  std::string utf8;
  text.toUTF8String(utf8);
  return utf8;
}

const icu::Normalizer2& composition() {
  UErrorCode status = U_ZERO_ERROR;
  return *icu::Normalizer2::getNFCInstance(status);
}

icu::UnicodeString composed(std::string_view text) {
  UErrorCode status = U_ZERO_ERROR;
  return composition().normalize(toUtf16(text), status);
}

UChar32 icuScalar(char32_t scalar) { return static_cast<UChar32>(scalar); }

bool hasCategory(char32_t scalar, std::uint32_t mask) {
  return (U_GET_GC_MASK(icuScalar(scalar)) & mask) != 0;
}

}  // namespace

char32_t nextScalar(std::string_view text, std::size_t& offset) {
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  UChar32 scalar = 0;
  U8_NEXT_OR_FFFD(bytes, offset, text.size(), scalar);
  return static_cast<char32_t>(scalar);
}

char32_t previousScalar(std::string_view text, std::size_t& offset) {
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  // The macro keeps its position in a signed 32-bit integer, so give it only the last few bytes.
  const std::size_t window = std::min<std::size_t>(offset, U8_MAX_LENGTH);
  const std::uint8_t* start = bytes + (offset - window);
  auto position = static_cast<std::int32_t>(window);
  UChar32 scalar = 0;
  U8_PREV_OR_FFFD(start, 0, position, scalar);
  offset -= window - static_cast<std::size_t>(position);
  return static_cast<char32_t>(scalar);
}

void appendScalar(std::string& text, char32_t scalar) {
  std::array<std::uint8_t, U8_MAX_LENGTH> bytes{};
  std::size_t length = 0;
  U8_APPEND_UNSAFE(bytes, length, static_cast<std::uint32_t>(scalar));
  text.append(reinterpret_cast<const char*>(bytes.data()), length);
}

bool isWellFormed(std::string_view text) {
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  for (std::size_t offset = 0; offset < text.size();) {
    UChar32 scalar = 0;
    U8_NEXT(bytes, offset, text.size(), scalar);
    if (scalar < 0) return false;
  }
  return true;
}

std::string wellFormed(std::string_view text) {
  std::string copy;
  copy.reserve(text.size());
  for (std::size_t offset = 0; offset < text.size();) appendScalar(copy, nextScalar(text, offset));
  return copy;
}

bool isWhiteSpace(char32_t scalar) {
  return hasCategory(scalar, U_GC_Z_MASK) || (scalar >= 0x09 && scalar <= 0x0D) || scalar == 0x85;
}

bool isLetter(char32_t scalar) { return hasCategory(scalar, U_GC_L_MASK | U_GC_M_MASK); }

bool isPunctuation(char32_t scalar) { return hasCategory(scalar, U_GC_P_MASK); }

bool isMark(char32_t scalar) { return hasCategory(scalar, U_GC_M_MASK); }

bool isDiacritic(char32_t scalar) { return hasCategory(scalar, U_GC_MN_MASK | U_GC_ME_MASK); }

char32_t baseLetter(char32_t scalar) {
  UErrorCode status = U_ZERO_ERROR;
  icu::UnicodeString decomposition;
  UChar32 base = icuScalar(scalar);
  if (icu::Normalizer2::getNFDInstance(status)->getDecomposition(base, decomposition)) {
    base = decomposition.char32At(0);
  }
  return static_cast<char32_t>(u_foldCase(base, U_FOLD_CASE_DEFAULT));
}

void appendUpperCase(std::string& text, char32_t scalar) {
  std::string single;
  appendScalar(single, scalar);
  UErrorCode status = U_ZERO_ERROR;
  icu::StringByteSink<std::string> sink(&text);
  icu::CaseMap::utf8ToUpper("", 0, icu::StringPiece(single), sink, nullptr, status);
}

std::string lowerCased(std::string_view text) {
  return toUtf8(toUtf16(text).toLower(icu::Locale::getRoot()));
}

std::string inComposedForm(std::string_view text) { return toUtf8(composed(text)); }

std::string_view trimmed(std::string_view text) {
  while (!text.empty()) {
    std::size_t behind = 0;
    if (!isWhiteSpace(nextScalar(text, behind))) break;
    text.remove_prefix(behind);
  }
  while (!text.empty()) {
    std::size_t before = text.size();
    if (!isWhiteSpace(previousScalar(text, before))) break;
    text.remove_suffix(text.size() - before);
  }
  return text;
}

bool canonicallyEqual(std::string_view a, std::string_view b) { return composed(a) == composed(b); }

bool canonicallyContains(std::string_view text, std::string_view part) {
  if (part.empty()) return true;
  const icu::UnicodeString haystack = composed(text);
  const icu::UnicodeString needle = composed(part);
  for (std::int32_t at = 0; (at = haystack.indexOf(needle, at)) >= 0; ++at) {
    const std::int32_t end = at + needle.length();
    if (end == haystack.length() || composition().hasBoundaryBefore(haystack.char32At(end))) return true;
  }
  return false;
}

std::size_t utf16Length(std::string_view text) {
  std::size_t length = 0;
  for (std::size_t offset = 0; offset < text.size();) length += nextScalar(text, offset) > 0xFFFF ? 2U : 1U;
  return length;
}

std::string replacingUtf16(std::string_view text, std::size_t start, std::size_t count,
                           std::string_view replacement) {
  return toUtf8(toUtf16(text).replace(static_cast<std::int32_t>(start), static_cast<std::int32_t>(count),
                                      toUtf16(replacement)));
}

std::string_view lastCharacters(std::string_view text, std::size_t count) {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::BreakIterator> characters(
      icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
  const std::unique_ptr<UText, decltype(&utext_close)> source(
      utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status), &utext_close);
  if (U_FAILURE(status)) return text;
  characters->setText(source.get(), status);
  std::int32_t start = characters->last();
  for (std::size_t taken = 0; taken < count && start > 0; ++taken) start = characters->previous();
  return text.substr(static_cast<std::size_t>(std::max(start, 0)));
}

}  // namespace tavelo::unicode
