#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "text/PhraseAutomaton.h"

namespace tavelo {

/// Finds the spoken phrases to replace in a raw transcript, from left to right.
///
/// Where phrases overlap, the one that comes first in the table wins; between occurrences of one phrase, the
/// leftmost wins. Because no replacement can be part of a phrase, the result is the same as replacing one
/// phrase after the other in the whole text. One pass, linear time, memory only for overlapping occurrences.
class PhraseMatcher final {
 public:
  /// Bytes `start` to `end` of the text, including the marks after the last letter.
  struct Occurrence {
    std::size_t start = 0;
    std::size_t end = 0;
    std::size_t phrase = 0;
  };

  /// `text` must be well-formed UTF-8 and outlive the matcher.
  explicit PhraseMatcher(std::string_view text) : text_(text) {}

  /// The next occurrence; absent at the end.
  std::optional<Occurrence> next();

 private:
  enum class Claim { open, granted, refused };
  struct Candidate {
    Occurrence occurrence;
    Claim claim = Claim::open;
  };

  void collectCandidates();
  void addCandidates(unsigned ending);
  /// Where the longest unfinished phrase begins; the current offset if there is none.
  std::size_t startOfUnfinished() const;
  /// Where the last `symbols` symbols begin.
  std::size_t startOfLast(std::size_t symbols) const;
  void grant(std::size_t index);

  const PhraseAutomaton& automaton_ = PhraseAutomaton::shared();
  std::string_view text_;
  std::size_t offset_ = 0;
  PhraseAutomaton::State state_ = PhraseAutomaton::startState;
  /// Ring buffer of the offsets of the last symbols, without skipped ones.
  std::array<std::size_t, PhraseAutomaton::longestPhrase> starts_{};
  std::size_t symbols_ = 0;
  /// Candidates that may overlap one another, ordered by their ends. The first `given_` are done.
  std::vector<Candidate> candidates_;
  std::size_t given_ = 0;
};

}  // namespace tavelo
