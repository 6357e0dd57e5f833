#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <unicode/regex.h>
#include <unicode/stsearch.h>
#include <unicode/tblcoll.h>
#include <unicode/unistr.h>

namespace tavelo::bench {

/// Normalises a transcript the straightforward way: ICU throughout, phrase after phrase over the whole text,
/// then one regular expression after the other. Peer of the benchmark and reference of the tests; written for
/// plainness. Collator, searches and patterns are built once. One thread at a time.
class StepwiseNormalizer final {
 public:
  enum class Search {
    /// ICU's collation search at primary strength, Vietnamese: what one would reach for.
    collation,
    /// Letter by letter over the decomposed, case-folded text without marks: exact in what counts as equal.
    letters,
  };

  explicit StepwiseNormalizer(Search search);

  std::string normalize(std::string_view text);

 private:
  struct Phrase {
    icu::UnicodeString text;
    icu::UnicodeString replacement;
    std::unique_ptr<icu::StringSearch> search;
  };
  struct CleanUp {
    std::unique_ptr<icu::RegexMatcher> matcher;
    icu::UnicodeString replacement;
  };

  icu::UnicodeString replaceByCollation(const icu::UnicodeString& text, Phrase& phrase);

  Search search_;
  std::unique_ptr<icu::RuleBasedCollator> collator_;
  std::vector<Phrase> phrases_;
  std::vector<CleanUp> cleanUps_;
};

}  // namespace tavelo::bench
