#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// All that the program needs of Unicode, over ICU. Strings are UTF-8; each ill-formed sequence in them reads
/// as U+FFFD. Pure functions: any thread, no failure.
namespace tavelo::unicode {

inline constexpr char32_t replacementCharacter = 0xFFFD;

/// The scalar at `offset` (in bytes, less than the length), which is moved behind it.
char32_t nextScalar(std::string_view text, std::size_t& offset);

/// The scalar that ends at `offset` (in bytes, not 0), which is moved before it.
char32_t previousScalar(std::string_view text, std::size_t& offset);

void appendScalar(std::string& text, char32_t scalar);

/// Whether there is no ill-formed sequence in `text`.
bool isWellFormed(std::string_view text);

/// A copy with U+FFFD for each ill-formed sequence.
std::string wellFormed(std::string_view text);

/// Separators (categories Zs, Zl, Zp), U+0009 to U+000D and U+0085.
bool isWhiteSpace(char32_t scalar);

/// Category L or M.
bool isLetter(char32_t scalar);

/// Category M.
bool isMark(char32_t scalar);

/// Marks that a search without diacritics skips: categories Mn and Me.
bool isDiacritic(char32_t scalar);

/// The first scalar of the canonical decomposition, case-folded: what a search without case and diacritics
/// compares. "đ" has no decomposition and stays a letter of its own.
char32_t baseLetter(char32_t scalar);

/// Appends the full upper-case mapping of one scalar, which may be longer than one scalar; no locale.
void appendUpperCase(std::string& text, char32_t scalar);

/// Full lower-case mapping; no locale.
std::string lowerCased(std::string_view text);

/// `text` without white space at either end.
std::string_view trimmed(std::string_view text);

/// Whether both are the same under canonical equivalence.
bool canonicallyEqual(std::string_view a, std::string_view b);

/// Whether `text` contains `part` under canonical equivalence, case-sensitively. A letter is not part of the
/// same letter with a mark. An empty `part` is contained in everything.
bool canonicallyContains(std::string_view text, std::string_view part);

/// Length in UTF-16 code units.
std::size_t utf16Length(std::string_view text);

/// `text` with `count` UTF-16 code units from `start` replaced by `replacement`; both must lie within the
/// length. Half of a surrogate pair that is left standing becomes U+FFFD.
std::string replacingUtf16(std::string_view text, std::size_t start, std::size_t count,
                           std::string_view replacement);

/// The last `count` user-perceived characters (extended grapheme clusters) of `text`, all of it when it has
/// fewer.
std::string_view lastCharacters(std::string_view text, std::size_t count);

}  // namespace tavelo::unicode
