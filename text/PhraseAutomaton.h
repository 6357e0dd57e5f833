#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "text/SpokenPhrases.h"

namespace tavelo {

/// Finds all spoken phrases in one pass: an Aho-Corasick automaton over letters without case and diacritics.
/// Immutable once built; any thread.
class PhraseAutomaton final {
 public:
  /// What a scalar is to the phrases: one of their letters (or the space), a diacritic, which is skipped, or
  /// anything else, which is in no phrase.
  using Symbol = std::uint8_t;
  using State = std::uint8_t;
  /// Phrases by their place in `spokenPhraseReplacements`; bit 0 is the first.
  using PhraseSet = std::uint16_t;

  static constexpr Symbol otherSymbol = 0;
  static constexpr Symbol skippedSymbol = 0xFF;
  static constexpr State startState = 0;
  /// Every phrase has fewer symbols.
  static constexpr std::size_t longestPhrase = 16;

  /// The automaton of `spokenPhraseReplacements`, built at the first call.
  static const PhraseAutomaton& shared();

  Symbol symbol(char32_t scalar) const { return scalar < plane_.size() ? plane_[scalar] : classify(scalar); }
  State next(State state, Symbol symbol) const { return nodes_[state].next[symbol]; }
  /// The phrases that end where `state` was reached.
  PhraseSet ending(State state) const { return nodes_[state].ending; }
  /// Symbols of the longest beginning of a phrase that ends where `state` was reached.
  std::size_t depth(State state) const { return nodes_[state].depth; }
  /// Symbols in a phrase.
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

  /// The letters of the phrases; the symbol of a letter is its place, counted from 1.
  std::u32string letters_;
  std::vector<Node> nodes_{1};
  std::array<std::size_t, spokenPhraseReplacements.size()> lengths_{};
  /// Symbols of U+0000 to U+FFFF.
  std::vector<Symbol> plane_;
};

}  // namespace tavelo
