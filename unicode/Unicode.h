#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The Unicode functions that the program needs, implemented with ICU. Strings are UTF-8; each ill-formed
/// sequence in them reads as U+FFFD. Pure functions: any thread, no failure.
namespace tavelo::unicode {

inline constexpr char32_t replacementCharacter = 0xFFFD;

/// Returns the scalar at `offset` (in bytes, less than the length) and moves `offset` past it.
char32_t nextScalar(std::string_view text, std::size_t& offset);

/// Returns the scalar that ends at `offset` (in bytes, not 0) and moves `offset` to its start.
char32_t previousScalar(std::string_view text, std::size_t& offset);

void appendScalar(std::string& text, char32_t scalar);

/// Whether `text` has no ill-formed sequence.
bool isWellFormed(std::string_view text);

/// A copy with U+FFFD for each ill-formed sequence.
std::string wellFormed(std::string_view text);

/// Separators (categories Zs, Zl, Zp), U+0009 to U+000D and U+0085.
bool isWhiteSpace(char32_t scalar);

/// Category L or M.
bool isLetter(char32_t scalar);

/// Category P.
bool isPunctuation(char32_t scalar);

/// Category M.
bool isMark(char32_t scalar);

/// Marks that a search without diacritics skips: categories Mn and Me.
bool isDiacritic(char32_t scalar);

/// The first scalar of the canonical decomposition, case-folded. A search that ignores case and diacritics
/// compares these. "đ" has no decomposition, so it differs from "d".
char32_t baseLetter(char32_t scalar);

/// Appends the full upper-case mapping of one scalar, which may have several scalars. Ignores the locale.
void appendUpperCase(std::string& text, char32_t scalar);

/// Full lower-case mapping. Ignores the locale.
std::string lowerCased(std::string_view text);

/// `text` in the composed form (NFC).
std::string inComposedForm(std::string_view text);

/// `text` without white space at either end.
std::string_view trimmed(std::string_view text);

/// Whether both are canonically equivalent.
bool canonicallyEqual(std::string_view a, std::string_view b);

/// Whether `text` contains `part` under canonical equivalence. Case-sensitive. A match never ends between a
/// letter and its marks. Every text contains an empty `part`.
bool canonicallyContains(std::string_view text, std::string_view part);

/// Length in UTF-16 code units.
std::size_t utf16Length(std::string_view text);

/// `text` with `count` UTF-16 code units from `start` on replaced by `replacement`. The range must lie within
/// the text. If it splits a surrogate pair, the remaining half becomes U+FFFD.
std::string replacingUtf16(std::string_view text, std::size_t start, std::size_t count,
                           std::string_view replacement);

/// The last `count` user-perceived characters (extended grapheme clusters) of `text`, or all of it if it has
/// fewer.
std::string_view lastCharacters(std::string_view text, std::size_t count);

}  // namespace tavelo::unicode
