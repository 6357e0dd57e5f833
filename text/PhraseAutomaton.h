#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "text/SpokenPhrases.h"

namespace tavelo {

/// An Aho-Corasick automaton that finds all spoken phrases in one pass, ignoring case and diacritics.
/// Immutable once built; any thread.
class PhraseAutomaton final {
 public:
  /// The class of a scalar: a letter (or the space) of the phrases, a diacritic, which is skipped, or any
  /// other scalar, which is in no phrase.
  using Symbol = std::uint8_t;
  using State = std::uint8_t;
  /// One bit for each phrase; bit 0 is the first of `spokenPhraseReplacements`.
  using PhraseSet = std::uint16_t;

  static constexpr Symbol otherSymbol = 0;
  static constexpr Symbol skippedSymbol = 0xFF;
  static constexpr State startState = 0;
  /// Every phrase has fewer symbols than this.
  static constexpr std::size_t longestPhrase = 16;

  /// The automaton for `spokenPhraseReplacements`, built on the first call.
  static const PhraseAutomaton& shared();

  Symbol symbol(char32_t scalar) const { return scalar < plane_.size() ? plane_[scalar] : classify(scalar); }
  State next(State state, Symbol symbol) const { return nodes_[state].next[symbol]; }
  /// The phrases that end in `state`.
  PhraseSet ending(State state) const { return nodes_[state].ending; }
  /// The number of symbols of the longest phrase prefix that ends in `state`.
  std::size_t depth(State state) const { return nodes_[state].depth; }
  /// The number of symbols in a phrase.
  std::size_t length(std::size_t phrase) const { return lengths_[phrase]; }

 private:
  struct Node {
    std::array<State, 32> next{};
    PhraseSet ending = 0;
    std::uint8_t depth = 0;
  };

  PhraseAutomaton();
  void addPhrase(std::size_t phrase);
  void addFailureTransitions();
  Symbol classify(char32_t scalar) const;

  /// The letters of the phrases. The symbol of a letter is its position, counted from 1.
  std::u32string letters_;
  std::vector<Node> nodes_{1};
  std::array<std::size_t, spokenPhraseReplacements.size()> lengths_{};
  /// Symbols of U+0000 to U+FFFF.
  std::vector<Symbol> plane_;
};

}  // namespace tavelo
