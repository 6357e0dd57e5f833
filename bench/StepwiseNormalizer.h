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

/// Normalises a transcript in the straightforward way: with ICU, it replaces one phrase after another in the
/// whole text, then applies one regular expression after another. It is the peer of the benchmark and the
/// reference of the tests, so it is simple rather than fast. One thread at a time.
class StepwiseNormalizer final {
 public:
  enum class Search {
    /// ICU's collation search at primary strength for Vietnamese: the obvious choice.
    collation,
    /// Compares letter by letter, decomposed, case-folded and without marks: the exact rules of equality.
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
