#include "text/PhraseAutomaton.h"

#include <queue>

#include "unicode/Unicode.h"

namespace tavelo {

const PhraseAutomaton& PhraseAutomaton::shared() {
  static const PhraseAutomaton automaton;
  return automaton;
}

PhraseAutomaton::PhraseAutomaton() {
  for (std::size_t phrase = 0; phrase < spokenPhraseReplacements.size(); ++phrase) addPhrase(phrase);
  addFailureTransitions();
  plane_.reserve(0x10000);
  for (char32_t scalar = 0; scalar < 0x10000; ++scalar) plane_.push_back(classify(scalar));
}

void PhraseAutomaton::addPhrase(std::size_t phrase) {
  const std::string_view text = spokenPhraseReplacements[phrase].phrase;
  State state = startState;
  for (std::size_t offset = 0; offset < text.size(); ++lengths_[phrase]) {
    const char32_t letter = unicode::baseLetter(unicode::nextScalar(text, offset));
    if (letters_.find(letter) == std::u32string::npos) letters_ += letter;
    const auto symbol = static_cast<Symbol>(letters_.find(letter) + 1);
    if (next(state, symbol) == startState) {
      nodes_[state].next[symbol] = static_cast<State>(nodes_.size());
      nodes_.emplace_back().depth = static_cast<std::uint8_t>(lengths_[phrase] + 1);
    }
    state = next(state, symbol);
  }
  nodes_[state].ending = static_cast<PhraseSet>(1U << phrase);
}

// A missing transition is copied from the longest proper suffix that is also a prefix of a phrase. Going
// breadth first, that suffix is shorter and therefore already complete.
void PhraseAutomaton::addFailureTransitions() {
  std::vector<State> suffix(nodes_.size(), startState);
  std::queue<State> pending;
  for (pending.push(startState); !pending.empty(); pending.pop()) {
    const State state = pending.front();
    Node& node = nodes_[state];
    node.ending = static_cast<PhraseSet>(node.ending | nodes_[suffix[state]].ending);
    for (std::size_t symbol = 0; symbol < node.next.size(); ++symbol) {
      const State fallback = state == startState ? startState : nodes_[suffix[state]].next[symbol];
      if (node.next[symbol] == startState) {
        node.next[symbol] = fallback;
      } else {
        suffix[node.next[symbol]] = fallback;
        pending.push(node.next[symbol]);
      }
    }
  }
}

PhraseAutomaton::Symbol PhraseAutomaton::classify(char32_t scalar) const {
  if (unicode::isDiacritic(scalar)) return skippedSymbol;
  const std::size_t place = letters_.find(unicode::baseLetter(scalar));
  return place == std::u32string::npos ? otherSymbol : static_cast<Symbol>(place + 1);
}

}  // namespace tavelo
