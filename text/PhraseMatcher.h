#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "text/PhraseAutomaton.h"

namespace tavelo {

/// Yields what is to be replaced in a raw transcript, from left to right.
///
/// The phrases claim the text in the order of their table, each its leftmost occurrences first, and what one
/// has claimed no later one may touch. Because no replacement can take part in a phrase, this is what
/// replacing phrase after phrase in the whole text comes to. One pass; time linear in the text; memory only
/// for occurrences that overlap one another.
class PhraseMatcher final {
 public:
  /// Bytes `start` to `end` of the text, the marks behind the last letter included.
  struct Occurrence {
    std::size_t start = 0;
    std::size_t end = 0;
    std::size_t phrase = 0;
  };

  /// `text` is well-formed UTF-8 and outlives the matcher.
  explicit PhraseMatcher(std::string_view text) : text_(text) {}

  /// The next occurrence; absent when there is none left.
  std::optional<Occurrence> next();

 private:
  enum class Claim { open, granted, refused };
  struct Candidate {
    Occurrence occurrence;
    Claim claim = Claim::open;
  };

  void collectCandidates();
  void addCandidates(unsigned ending);
  /// Where the longest phrase that is still open begins; the offset when none is.
  std::size_t startOfUnfinished() const;
  /// Where the last `symbols` symbols begin.
  std::size_t startOfLast(std::size_t symbols) const;
  void grant(std::size_t index);

  const PhraseAutomaton& automaton_ = PhraseAutomaton::shared();
  std::string_view text_;
  std::size_t offset_ = 0;
  PhraseAutomaton::State state_ = PhraseAutomaton::startState;
  /// Where each of the last symbols stands, skipped ones not counted; a ring.
  std::array<std::size_t, PhraseAutomaton::longestPhrase> starts_{};
  std::size_t symbols_ = 0;
  /// Candidates that may overlap one another, by their ends; `given_` of them are dealt with.
  std::vector<Candidate> candidates_;
  std::size_t given_ = 0;
};

}  // namespace tavelo
