#include "bench/StepwiseNormalizer.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include <unicode/coll.h>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>

#include "text/SpokenPhrases.h"

namespace tavelo::bench {
namespace {

using icu::UnicodeString;

void check(UErrorCode status) {
  if (U_FAILURE(status)) std::abort();
}

UnicodeString utf16(std::string_view text) {
  return UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
}

bool isMark(UChar32 c) { return (U_GET_GC_MASK(c) & U_GC_M_MASK) != 0; }

bool isLetter(UChar32 c) { return (U_GET_GC_MASK(c) & (U_GC_L_MASK | U_GC_M_MASK)) != 0; }

bool isWhiteSpace(UChar32 c) {
  return (U_GET_GC_MASK(c) & U_GC_Z_MASK) != 0 || (c >= 9 && c <= 13) || c == 0x85;
}

UnicodeString trimmed(const UnicodeString& text) {
  std::int32_t start = 0;
  std::int32_t end = text.length();
  while (start < end && isWhiteSpace(text.char32At(start))) start = text.moveIndex32(start, 1);
  while (end > start && isWhiteSpace(text.char32At(end - 1))) end = text.moveIndex32(end, -1);
  return {text, start, end - start};
}

/// A scalar that the search compares, without case and marks, and its position in the text.
struct Letter {
  UChar32 base;
  std::int32_t start;
  std::int32_t end;

  bool operator==(const Letter& other) const { return base == other.base; }
};

std::vector<Letter> letters(const UnicodeString& text) {
  UErrorCode status = U_ZERO_ERROR;
  const auto* decomposition = icu::Normalizer2::getNFDInstance(status);
  check(status);
  std::vector<Letter> result;
  for (std::int32_t at = 0; at < text.length(); at = text.moveIndex32(at, 1)) {
    const UChar32 c = text.char32At(at);
    if (u_charType(c) == U_NON_SPACING_MARK || u_charType(c) == U_ENCLOSING_MARK) continue;
    const UChar32 base = decomposition->normalize(UnicodeString(c), status).char32At(0);
    result.push_back({u_foldCase(base, U_FOLD_CASE_DEFAULT), at, text.moveIndex32(at, 1)});
  }
  return result;
}

UnicodeString replaceByLetters(const UnicodeString& text, const UnicodeString& phrase,
                               const UnicodeString& replacement) {
  const std::vector<Letter> haystack = letters(text);
  const std::vector<Letter> needle = letters(phrase);
  UnicodeString result;
  std::int32_t copied = 0;
  auto from = haystack.begin();
  while (true) {
    const auto found = std::search(from, haystack.end(), needle.begin(), needle.end());
    if (found == haystack.end()) break;
    from = found + static_cast<std::ptrdiff_t>(needle.size());
    result.append(text, copied, found->start - copied).append(replacement);
    copied = (from - 1)->end;
    while (copied < text.length() && isMark(text.char32At(copied))) copied = text.moveIndex32(copied, 1);
  }
  return result.append(text, copied, text.length() - copied);
}

UnicodeString capitalized(const UnicodeString& text) {
  UnicodeString result;
  bool capitalizeNext = true;
  for (std::int32_t at = 0; at < text.length(); at = text.moveIndex32(at, 1)) {
    const UChar32 c = text.char32At(at);
    UnicodeString single(c);
    if (capitalizeNext && isLetter(c)) {
      single.toUpper(icu::Locale::getRoot());
      capitalizeNext = false;
    }
    result.append(single);
    if (c == '.' || c == '!' || c == '?' || c == '\n') {
      capitalizeNext = true;
    } else if (!isWhiteSpace(c)) {
      capitalizeNext = false;
    }
  }
  return result;
}

}  // namespace

StepwiseNormalizer::StepwiseNormalizer(Search search) : search_(search) {
  UErrorCode status = U_ZERO_ERROR;
  collator_.reset(dynamic_cast<icu::RuleBasedCollator*>(icu::Collator::createInstance("vi", status)));
  check(status);
  collator_->setStrength(icu::Collator::PRIMARY);
  for (const auto& [phrase, replacement] : spokenPhraseReplacements) {
    const UnicodeString pattern = utf16(phrase);
    phrases_.push_back(
        {pattern, utf16(replacement),
         std::make_unique<icu::StringSearch>(pattern, UnicodeString("-"), collator_.get(), nullptr, status)});
  }
  const std::vector<std::pair<const char*, const char*>> cleanUps{
      {"[\\t ]+", " "}, {" +([,.;:?!])", "$1"}, {"\\n +", "\n"}, {" +\\n", "\n"}};
  for (const auto& [pattern, replacement] : cleanUps) {
    cleanUps_.push_back({std::make_unique<icu::RegexMatcher>(pattern, 0, status), replacement});
  }
  check(status);
}

std::string StepwiseNormalizer::normalize(std::string_view text) {
  UnicodeString current = trimmed(utf16(text));
  if (current.isEmpty()) return {};
  for (Phrase& phrase : phrases_) {
    current = search_ == Search::collation ? replaceByCollation(current, phrase)
                                           : replaceByLetters(current, phrase.text, phrase.replacement);
  }
  for (CleanUp& cleanUp : cleanUps_) {
    UErrorCode status = U_ZERO_ERROR;
    cleanUp.matcher->reset(current);
    UnicodeString cleaned = cleanUp.matcher->replaceAll(cleanUp.replacement, status);
    check(status);
    current = std::move(cleaned);
  }
  std::string result;
  capitalized(trimmed(current)).toUTF8String(result);
  return result;
}

icu::UnicodeString StepwiseNormalizer::replaceByCollation(const UnicodeString& text, Phrase& phrase) {
  UErrorCode status = U_ZERO_ERROR;
  phrase.search->setText(text, status);
  UnicodeString result;
  std::int32_t copied = 0;
  for (std::int32_t start = phrase.search->first(status); start != USEARCH_DONE;
       start = phrase.search->next(status)) {
    result.append(text, copied, start - copied).append(phrase.replacement);
    copied = start + phrase.search->getMatchedLength();
  }
  check(status);
  return result.append(text, copied, text.length() - copied);
}

}  // namespace tavelo::bench
